#include "app/window/StoreNotice.h"

#include <QAction>
#include <QLabel>

#include <algorithm>
#include <initializer_list>

namespace {

bool saysOneOf(const QString& reason, std::initializer_list<const char*> texts)
{
    return std::ranges::any_of(texts, [&reason](const char* text) { return reason.contains(QLatin1String(text)); });
}

} // namespace

StoreNotice::StoreNotice(QWidget* parent)
    : QToolBar(tr("Store of the drawings"), parent),
      text_(new QLabel(this)),
      tryAgain_(new QAction(tr("Try again"), this)),
      startNewFile_(new QAction(tr("Keep the file aside and start a new one"), this))
{
    setObjectName(QStringLiteral("storeNotice"));
    setMovable(false);
    toggleViewAction()->setVisible(false); // it comes and goes by itself
    text_->setWordWrap(true);
    text_->setMargin(4);
    text_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    addWidget(text_);
    addAction(tryAgain_);
    addAction(startNewFile_);
    hide();
}

void StoreNotice::tell(const QString& path, const QString& reason)
{
    const bool isDamaged = saysOneOf(reason, {"not a database", "malformed", "no such column"});
    const bool isBarred = saysOneOf(reason, {"readonly", "unable to open"});
    QString problem;
    if (isDamaged)
        problem = tr("The file of the drawings is damaged: %1.").arg(path);
    else if (isBarred)
        problem = tr("The file of the drawings cannot be written: %1.").arg(path);
    else if (saysOneOf(reason, {"locked"}))
        problem = tr("Another program has locked the file of the drawings: %1.").arg(path);
    else
        problem = tr("The drawings cannot be stored in %1: %2.").arg(path, reason);
    text_->setText(problem + QLatin1Char(' ') +
                   tr("What you draw stays on the screen and is stored as soon as the file can be used."));
    startNewFile_->setVisible(isDamaged || isBarred);
    show();
}
