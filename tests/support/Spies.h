#pragma once

#include "platform/QZLog.h"
#include "platform/QZNotificationCenter.h"

#include <QStringList>

#include <utility>
#include <vector>

/// Collects the business log while it lives.
class LogSpy {
public:
    LogSpy() : before_(setBusCommonLogSink([this](const QString& line) { lines.append(line); })) {}
    LogSpy(const LogSpy&) = delete;
    LogSpy& operator=(const LogSpy&) = delete;
    ~LogSpy() { setBusCommonLogSink(std::move(before_)); }

    QStringList lines;

private:
    QZLogSink before_;
};

/// Collects the notifications of one name while it lives.
class NotificationSpy {
public:
    explicit NotificationSpy(const QString& name)
        : observation_(QZNotificationCenter::defaultCenter().observe(
              name, [this](const QZNotification& notification) { posts.push_back(notification); }))
    {}
    NotificationSpy(const NotificationSpy&) = delete;
    NotificationSpy& operator=(const NotificationSpy&) = delete;

    std::vector<QZNotification> posts;

private:
    QZObservation observation_;
};
