#pragma once

#include <QCoreApplication>

#include <memory>
#include <mutex>

/// The one instance of a panel, created on first use under a lock. It goes when the application goes, before the last
/// of Qt's windowing does; a later application in the same process gets a new one.
template <typename Panel>
class QZSharedInstance {
public:
    template <typename Create>
    static Panel& get(Create create)
    {
        const std::lock_guard lock(mutex());
        if (!slot()) {
            slot() = create();
            qAddPostRoutine([] { slot().reset(); });
        }
        return *slot();
    }

    /// The instance if there is one, else null.
    static Panel* existing() { return slot().get(); }

private:
    static std::recursive_mutex& mutex()
    {
        static std::recursive_mutex instance;
        return instance;
    }

    static std::unique_ptr<Panel>& slot()
    {
        static std::unique_ptr<Panel> instance;
        return instance;
    }
};
