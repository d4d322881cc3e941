#pragma once

#include <QString>
#include <QStringList>

#include <functional>

/// A question to the user. The first button is the default and the safe answer.
struct QZAlertRequest {
    QString message;
    QStringList buttons;
    bool warning = true;
};

/// Asks through a runner that whoever owns the windows installs; tests install one that answers by itself.
class QZAlert {
public:
    /// Shows the request, waits, and returns firstButton + index of the pressed button.
    using Runner = std::function<int(const QZAlertRequest&)>;

    static constexpr int firstButton = 1000;

    /// Installs `runner` and returns the one in use until now; an empty one means that nobody can be asked.
    static Runner setRunner(Runner runner);

    /// The answer of the runner. Without a runner, or when it answers with a button that the request does not have (the
    /// user closed the window), the first button. A question that nobody could be asked is written to the log.
    static int run(const QZAlertRequest& request);
};
