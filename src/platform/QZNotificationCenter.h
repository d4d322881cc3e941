#pragma once

#include <QString>
#include <QVariantMap>

#include <functional>
#include <memory>

/// Root of everything that can be a notification's object: an observer finds out what it got with dynamic_cast.
class QZNotificationObject {
public:
    virtual ~QZNotificationObject() = default;

protected:
    QZNotificationObject() = default;
    QZNotificationObject(const QZNotificationObject&) = default;
    QZNotificationObject(QZNotificationObject&&) = default;
    QZNotificationObject& operator=(const QZNotificationObject&) = default;
    QZNotificationObject& operator=(QZNotificationObject&&) = default;
};

/// What an observer is told. `object` is borrowed and only valid during the call.
struct QZNotification {
    QString name;
    QZNotificationObject* object = nullptr;
    QVariantMap userInfo;
};

/// Keeps one observer registered: observing ends when the token is reset or destroyed. It may outlive the centre, and
/// an observer may drop its own token from inside its handler.
class [[nodiscard]] QZObservation {
public:
    QZObservation() = default;
    ~QZObservation();
    QZObservation(QZObservation&& other) noexcept = default;
    QZObservation& operator=(QZObservation&& other) noexcept;
    QZObservation(const QZObservation&) = delete;
    QZObservation& operator=(const QZObservation&) = delete;

    /// Stops observing; the handler is not called any more, not even by a post that is under way.
    void reset();

private:
    friend class QZNotificationCenter;
    struct Observer;
    struct Registry;

    QZObservation(std::weak_ptr<Registry> registry, std::shared_ptr<Observer> observer);

    std::weak_ptr<Registry> registry_;
    std::shared_ptr<Observer> observer_;
};

/// Named notifications, delivered at once to every observer in the order of observing. For the main thread only.
class QZNotificationCenter {
public:
    /// Must not throw.
    using Handler = std::function<void(const QZNotification&)>;

    QZNotificationCenter();

    static QZNotificationCenter& defaultCenter();

    /// Calls `handler` for every notification of that name, whoever its object is, while the token lives.
    [[nodiscard]] QZObservation observe(const QString& name, Handler handler);

    /// Tells everyone who observed `name` before the call and still does when its turn comes; an observer added by a
    /// handler hears only later posts. A handler may post in its turn.
    void post(const QString& name, QZNotificationObject* object = nullptr, const QVariantMap& userInfo = {});

private:
    std::shared_ptr<QZObservation::Registry> registry_;
};
