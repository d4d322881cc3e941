#include "app/picture/Renderer.h"

#include "app/bars/BarFiles.h"
#include "app/bars/BarReader.h"
#include "app/calendar/ChartCycle.h"
#include "app/calendar/Resample.h"
#include "app/picture/ChartPicture.h"
#include "app/picture/FigureCopy.h"
#include "app/picture/PictureSheet.h"
#include "platform/QZGlobalEnv.h"

#include <QDir>

#include <algorithm>
#include <vector>

namespace {

/// One picture of many.
struct Job {
    QString file;
    QString stock;
    QZPaintCycle cycle;
};

/// Why what the sheet shows was not written, null if it was.
QString writePicture(PictureSheet& sheet, const RenderRequest& request, const QString& stock, const QString& path)
{
    if (request.from || request.to) {
        const QString failure = sheet.showRange(request.from, request.to);
        if (!failure.isNull())
            return QStringLiteral("%1: %2").arg(stock, failure);
    }
    return ChartPicture::write(sheet.chart(), path);
}

} // namespace

int Renderer::complain(int status, const QString& line) const
{
    complaint_(line);
    return status;
}

int Renderer::run(const RenderRequest& request)
{
    if (request.user)
        QZGlobalEnv::getShareInstance().setLoginUser(*request.user);
    FigureCopy figures;
    const QString failure = figures.take();
    if (!failure.isNull())
        return complain(failed, failure);
    if (!figures.hasFigures() && request.user)
        return complain(unusable, QStringLiteral("qzchart: no figures are stored for the user %1").arg(*request.user));
    return request.isAll ? renderAll(request) : renderOne(request);
}

int Renderer::renderOne(const RenderRequest& request) const
{
    const BarReadResult read = readBars(request.stocks.front());
    if (!read.isOk())
        return complain(unusable, read.error);
    const QZPaintCycle base = cycleOf(read.series);
    const QZPaintCycle cycle = request.cycle.value_or(base);
    if (!std::ranges::count(cyclesFor(read.series), cycle))
        return complain(unusable, QStringLiteral("%1: bars of the period %2 cannot be put together to %3")
                                      .arg(read.path, periodName(base), periodName(cycle)));
    PictureSheet sheet(request.size);
    const QString stock = read.series.name();
    if (sheet.show(read.series, cycle) == 0)
        complaint_(QStringLiteral("qzchart: no figures are stored for %1 %2").arg(stock, periodName(cycle)));
    const QString failure = writePicture(sheet, request, stock, request.target);
    if (!failure.isNull())
        return complain(failed, failure);
    progress_(QStringLiteral("Wrote %1").arg(request.target));
    return done;
}

// The files are read twice, as all bars of a market may be more than fits into the memory.
int Renderer::renderAll(const RenderRequest& request) const
{
    const QDir folder(request.target);
    if (!folder.mkpath(QStringLiteral(".")))
        return complain(failed, QStringLiteral("%1: cannot create the folder").arg(request.target));
    PictureSheet sheet(request.size);
    int status = done;
    std::vector<Job> jobs;
    QStringList stocks;
    for (const QString& file : barFiles(request.stocks)) {
        const BarReadResult read = readBars(file);
        const QString stock = read.series.name();
        if (!read.isOk()) {
            status = complain(failed, read.error);
        } else if (stocks.contains(stock)) {
            status = complain(failed, QStringLiteral("%1: left out, another file is named %2 too").arg(file, stock));
        } else {
            stocks.append(stock);
            for (const QZPaintCycle cycle : cyclesFor(read.series)) {
                if (cycle == request.cycle.value_or(cycle) && sheet.loadFigures(stock, cycle) > 0)
                    jobs.push_back({file, stock, cycle});
            }
        }
    }
    if (jobs.empty())
        complaint_(QStringLiteral("qzchart: no figures are stored for these stocks"));
    BarReadResult read;
    for (std::size_t i = 0; i < jobs.size(); ++i) {
        const Job& job = jobs[i];
        const QString period = periodName(job.cycle);
        progress_(QStringLiteral("%1/%2 %3 %4").arg(i + 1).arg(jobs.size()).arg(job.stock, period));
        if (read.path != job.file)
            read = readBars(job.file);
        const QString path = folder.filePath(QStringLiteral("%1-%2.png").arg(job.stock, period));
        if (read.isOk())
            sheet.show(read.series, job.cycle);
        const QString failure = read.isOk() ? writePicture(sheet, request, job.stock, path) : read.error;
        if (!failure.isNull())
            status = complain(failed, failure);
    }
    return status;
}
