#include "platform/QZNotificationCenter.h"

#include <QHash>

#include <algorithm>
#include <utility>
#include <vector>

struct QZObservation::Observer {
    QString name;
    QZNotificationCenter::Handler handler;
    bool observing = true;
};

struct QZObservation::Registry {
    QHash<QString, std::vector<std::shared_ptr<Observer>>> observers;

    void remove(const std::shared_ptr<Observer>& observer)
    {
        const auto found = observers.find(observer->name);
        if (found == observers.end())
            return;
        found->erase(std::remove(found->begin(), found->end(), observer), found->end());
        if (found->empty())
            observers.erase(found);
    }
};

QZObservation::QZObservation(std::weak_ptr<Registry> registry, std::shared_ptr<Observer> observer)
    : registry_(std::move(registry)), observer_(std::move(observer))
{}

QZObservation::~QZObservation()
{
    reset();
}

QZObservation& QZObservation::operator=(QZObservation&& other) noexcept
{
    if (this != &other) {
        reset();
        registry_ = std::move(other.registry_);
        observer_ = std::move(other.observer_);
    }
    return *this;
}

void QZObservation::reset()
{
    // Taken out first: releasing the handler may destroy what it captured and come back here.
    const auto observer = std::exchange(observer_, nullptr);
    const auto registry = std::exchange(registry_, {}).lock();
    if (!observer)
        return;
    observer->observing = false;
    if (registry)
        registry->remove(observer);
}

QZNotificationCenter::QZNotificationCenter() : registry_(std::make_shared<QZObservation::Registry>()) {}

QZNotificationCenter& QZNotificationCenter::defaultCenter()
{
    static QZNotificationCenter center;
    return center;
}

QZObservation QZNotificationCenter::observe(const QString& name, Handler handler)
{
    if (!handler)
        return {};
    auto observer = std::make_shared<QZObservation::Observer>();
    observer->name = name;
    observer->handler = std::move(handler);
    registry_->observers[name].push_back(observer);
    return {registry_, std::move(observer)};
}

void QZNotificationCenter::post(const QString& name, QZNotificationObject* object, const QVariantMap& userInfo)
{
    const QZNotification notification{name, object, userInfo};
    // The copy keeps each handler alive while it runs, even when it drops its own token.
    const auto observers = registry_->observers.value(name);
    for (const auto& observer : observers) {
        if (observer->observing)
            observer->handler(notification);
    }
}
