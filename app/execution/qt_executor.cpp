#include "app/execution/qt_executor.h"

#include <QCoreApplication>
#include <QThreadPool>

#include <algorithm>

platform::Executor qtExecutor() {
    // Jobs mostly wait for the disk. With one thread per core, the job of the current screen could wait for
    // scans started by closed screens.
    constexpr int minThreads = 16;
    QThreadPool* pool = QThreadPool::globalInstance();
    pool->setMaxThreadCount(std::max(pool->maxThreadCount(), minThreads));

    return {
        .background = [pool](platform::Executor::Job job) { pool->start(std::move(job)); },
        .interfaceThread =
            [](platform::Executor::Job job) {
                // No race with the end of the program: the destructor of QCoreApplication first resets
                // instance(), then waits for the global thread pool.
                if (QCoreApplication* application = QCoreApplication::instance())
                    QMetaObject::invokeMethod(application, std::move(job), Qt::QueuedConnection);
            },
    };
}
