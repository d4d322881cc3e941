#include "app/calendar/TradingCalendar.h"

#include "app/bars/CivilDate.h"

#include <algorithm>
#include <limits>
#include <unordered_map>
#include <utility>

namespace {

struct Session {
    std::size_t first = 0;
    std::size_t count = 0;
};

std::vector<BarTime> timesOf(const BarSeries& series)
{
    std::vector<BarTime> times;
    times.reserve(series.bars().size());
    for (int index = 0; index < series.size(); ++index)
        times.push_back(series.timeAt(index));
    return times;
}

std::vector<Session> sessionsOf(const std::vector<BarTime>& times)
{
    std::vector<Session> sessions;
    for (std::size_t index = 0; index < times.size(); ++index) {
        if (index == 0 || times[index].date != times[index - 1].date)
            sessions.push_back({index, 0});
        ++sessions.back().count;
    }
    return sessions;
}

/// The usual times of day: as many as a usual session has bars, and those that most sessions have. Sessions with
/// less than half the bars of the longest one do not count.
std::vector<std::int32_t> usualTimes(const std::vector<BarTime>& times)
{
    std::vector<Session> sessions = sessionsOf(times);
    const auto shorter = [](const Session& left, const Session& right) { return left.count < right.count; };
    const std::size_t longest = std::max_element(sessions.begin(), sessions.end(), shorter)->count;
    std::erase_if(sessions, [longest](const Session& session) { return session.count * 2 < longest; });

    std::unordered_map<std::int32_t, int> occurrences;
    for (const Session& session : sessions) {
        for (std::size_t index = session.first; index < session.first + session.count; ++index)
            ++occurrences[times[index].time];
    }
    const auto middle = sessions.begin() + static_cast<std::ptrdiff_t>(sessions.size() / 2);
    std::nth_element(sessions.begin(), middle, sessions.end(), shorter);

    std::vector<std::pair<int, std::int32_t>> ranked;
    ranked.reserve(occurrences.size());
    for (const auto& [time, count] : occurrences)
        ranked.emplace_back(-count, time);
    std::sort(ranked.begin(), ranked.end());
    ranked.resize(std::min(ranked.size(), middle->count));
    std::vector<std::int32_t> slots;
    slots.reserve(ranked.size());
    for (const auto& [rank, time] : ranked)
        slots.push_back(time);
    std::sort(slots.begin(), slots.end());
    return slots;
}

/// The nearest possible date; the time moves to that end of the day which keeps the order of moments.
BarTime possible(BarTime moment)
{
    const std::int32_t date = dateOfDay(dayNumber(moment.date));
    if (date == moment.date)
        return moment;
    return {date, date < moment.date ? std::numeric_limits<std::int32_t>::max() : 0};
}

int toIndex(std::int64_t index)
{
    using Limits = std::numeric_limits<int>;
    return static_cast<int>(std::clamp<std::int64_t>(index, Limits::min(), Limits::max()));
}

} // namespace

TradingCalendar::TradingCalendar(const BarSeries& series, const BarSeries& history)
    : times_(timesOf(series)), slots_{0}, intraday_(series.isIntraday())
{
    if (!times_.empty()) {
        firstDay_ = dayNumber(times_.front().date);
        lastDay_ = dayNumber(times_.back().date);
    }
    const DayLattice lattice = DayLattice::of(history);
    before_ = lattice.anchoredAt(firstDay_);
    after_ = lattice.anchoredAt(lastDay_);
    previousOrdinal_ = before_.lastBeforePeriodOf(firstDay_);
    nextOrdinal_ = after_.firstAfterPeriodOf(lastDay_);
    if (intraday_) {
        slots_ = usualTimes(timesOf(history));
        missingAtStart_ = slotsBefore(times_.front().time);
        missingAtEnd_ = slotCount() - slotsBefore(times_.back().time + 1);
    }
}

BarTime TradingCalendar::at(int index) const
{
    if (index >= 0 && index < size())
        return times_[static_cast<std::size_t>(index)];
    if (index < 0) {
        const std::int64_t back = -static_cast<std::int64_t>(index) - 1;
        if (back < missingAtStart_)
            return slotAt(firstDay_, missingAtStart_ - 1 - back);
        const std::int64_t left = back - missingAtStart_;
        return slotAt(before_.dayOf(previousOrdinal_ - left / slotCount()), slotCount() - 1 - left % slotCount());
    }
    const std::int64_t ahead = static_cast<std::int64_t>(index) - size();
    if (ahead < missingAtEnd_)
        return slotAt(lastDay_, slotCount() - missingAtEnd_ + ahead);
    const std::int64_t left = ahead - missingAtEnd_;
    return slotAt(after_.dayOf(nextOrdinal_ + left / slotCount()), left % slotCount());
}

int TradingCalendar::indexOf(BarTime moment) const
{
    moment = possible(moment);
    if (!intraday_)
        moment.time = 0;
    const std::int64_t day = dayNumber(moment.date);
    if (times_.empty())
        return toIndex(day < firstDay_ ? indexBeforeFirst(day, moment.time) : indexAfterLast(day, moment.time));
    if (moment < times_.front())
        return toIndex(indexBeforeFirst(day, moment.time));
    if (moment > times_.back())
        return toIndex(indexAfterLast(day, moment.time));
    return static_cast<int>(std::lower_bound(times_.begin(), times_.end(), moment) - times_.begin());
}

std::int64_t TradingCalendar::slotsBefore(std::int32_t time) const
{
    return std::lower_bound(slots_.begin(), slots_.end(), time) - slots_.begin();
}

BarTime TradingCalendar::slotAt(std::int64_t day, std::int64_t slot) const
{
    return {dateOfDay(day), slots_[static_cast<std::size_t>(slot)]};
}

std::int64_t TradingCalendar::indexAfterLast(std::int64_t day, std::int32_t time) const
{
    if (day == lastDay_)
        return size() + slotsBefore(time) - (slotCount() - missingAtEnd_);
    const std::int64_t ordinal = after_.ordinalAtOrAfter(day);
    const std::int64_t nextDay = size() + missingAtEnd_;
    if (ordinal < nextOrdinal_)
        return nextDay;
    const std::int64_t slot = after_.dayOf(ordinal) == day ? slotsBefore(time) : 0;
    return nextDay + (ordinal - nextOrdinal_) * slotCount() + slot;
}

std::int64_t TradingCalendar::indexBeforeFirst(std::int64_t day, std::int32_t time) const
{
    if (day == firstDay_)
        return slotsBefore(time) - missingAtStart_;
    const std::int64_t ordinal = before_.ordinalAtOrAfter(day);
    if (ordinal > previousOrdinal_)
        return -missingAtStart_;
    const std::int64_t slot = before_.dayOf(ordinal) == day ? slotsBefore(time) : 0;
    return -missingAtStart_ - (previousOrdinal_ + 1 - ordinal) * slotCount() + slot;
}
