#include "app/execution/qt_executor.h"

#include <QCoreApplication>
#include <QThreadPool>

#include <algorithm>

platform::Executor qtExecutor() {
    // A job mostly waits for the disk. With a thread per core, what a screen waits for could queue behind the
    // scans of screens that are gone.
    constexpr int enoughThreads = 16;
    QThreadPool* pool = QThreadPool::globalInstance();
    pool->setMaxThreadCount(std::max(pool->maxThreadCount(), enoughThreads));

    return {
        .background = [pool](platform::Executor::Job job) { pool->start(std::move(job)); },
        .interfaceThread =
            [](platform::Executor::Job job) {
                // The application object waits for the pool before it is gone, having hidden itself first: a
                // job that sees it may post to it.
                if (QCoreApplication* application = QCoreApplication::instance())
                    QMetaObject::invokeMethod(application, std::move(job), Qt::QueuedConnection);
            },
    };
}
