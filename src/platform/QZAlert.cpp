#include "platform/QZAlert.h"

#include "platform/QZLog.h"

#include <utility>

namespace {

QZAlert::Runner& currentRunner()
{
    static QZAlert::Runner runner;
    return runner;
}

} // namespace

QZAlert::Runner QZAlert::setRunner(Runner runner)
{
    return std::exchange(currentRunner(), std::move(runner));
}

int QZAlert::run(const QZAlertRequest& request)
{
    // A copy: the event loop that a runner spins may install another one.
    const Runner runner = currentRunner();
    if (!runner) {
        writeBusCommonLog(QStringLiteral("No one to ask, taking the first answer: %1").arg(request.message));
        return firstButton;
    }
    const int answer = runner(request);
    const bool isButton = answer >= firstButton && answer - firstButton < request.buttons.size();
    return isButton ? answer : firstButton;
}
