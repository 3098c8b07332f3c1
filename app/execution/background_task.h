#pragma once

#include "platform/base/executor.h"
#include "platform/base/progress.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>

#include <memory>
#include <utility>

/// An operation that runs in the background, with its progress for the screen. Runs one operation at a time;
/// a new one, or the destructor, stops the previous one and drops its result. Interface thread only.
class BackgroundTask : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool running READ isRunning NOTIFY runningChanged)
    Q_PROPERTY(double share READ share NOTIFY progressChanged)
    Q_PROPERTY(QString text READ text NOTIFY progressChanged)

public:
    explicit BackgroundTask(QObject* parent = nullptr);
    ~BackgroundTask() override;

    bool isRunning() const { return m_progress != nullptr; }
    bool isRemoving() const { return isRunning() && m_isRemoval; } ///< a removal is running

    /// Returns the processed share, 0 to 1; a negative number while it is unknown.
    double share() const;

    /// Returns the number of entries processed so far, with their size or the total; empty before the first.
    /// After stop() it says so: the result of a removal follows after what it left has been measured.
    QString text() const;

    /// Runs `work(progress)` in the background, then calls `publish(result)` on the interface thread, after
    /// which the task is no longer running, unless `publish` runs the next operation. `work` must not access
    /// the model, so it captures copies. `publish` may access the owner of the task.
    template <class Work, class Publish>
    void run(const platform::Executor& executor, Work work, Publish publish) {
        start(
            executor, false, std::move(work), [](const auto&) {}, std::move(publish));
    }

    /// Does the same for an operation that removes something. Calls `record(result)` before `publish`, and
    /// does so even if the task has been destroyed: `record` must not access its owner. After stop() the
    /// result tells what was removed until then.
    template <class Work, class Record, class Publish>
    void runRemoval(const platform::Executor& executor, Work work, Record record, Publish publish) {
        start(executor, true, std::move(work), std::move(record), std::move(publish));
    }

    /// Does the same as run() for an operation that uses an executor itself: `operation(progress,
    /// completion)` starts it, with a shared pointer to the progress, and `completion(result)` must then be
    /// called on the interface thread.
    template <class Operation, class Publish>
    void run(Operation operation, Publish publish) {
        const auto progress = begin(false);
        operation(progress, completion([](const auto&) {}, std::move(publish)));
    }

    /// Does the same as runRemoval() for such an operation.
    template <class Operation, class Record, class Publish>
    void runRemoval(Operation operation, Record record, Publish publish) {
        const auto progress = begin(true);
        operation(progress, completion(std::move(record), std::move(publish)));
    }

    /// Stops the operation. A removal ends with a result; any other operation is dropped at once.
    Q_INVOKABLE void stop();

Q_SIGNALS:
    void runningChanged();
    void progressChanged();

private:
    template <class Work, class Record, class Publish>
    void start(const platform::Executor& executor, bool isRemoval, Work work, Record record,
               Publish publish) {
        const auto progress = begin(isRemoval);
        executor.background([executor, progress, work = std::move(work),
                             complete = completion(std::move(record), std::move(publish))]() mutable {
            // Shared because executors copy jobs and results may be large.
            auto value = std::make_shared<decltype(work(*progress))>(work(*progress));
            executor.interfaceThread(
                [value, complete = std::move(complete)]() mutable { complete(std::move(*value)); });
        });
    }

    /// Returns the function that takes the result of the operation that has just begun.
    template <class Record, class Publish>
    auto completion(Record record, Publish publish) {
        return [task = QPointer(this), progress = m_progress, record = std::move(record),
                publish = std::move(publish)](auto value) mutable {
            record(std::as_const(value));
            if (!task || task->m_progress != progress)
                return;
            publish(std::move(value));
            if (task && task->m_progress == progress)
                task->end();
        };
    }

    std::shared_ptr<platform::Progress> begin(bool isRemoval);
    void end();

    std::shared_ptr<platform::Progress> m_progress; ///< of the running operation, otherwise null
    bool m_isRemoval = false;
    QTimer m_refresh;
};
