#pragma once

#include "platform/base/executor.h"

#include <QPointer>

#include <memory>
#include <utility>

/// Returns an executor that runs background jobs in Qt's global thread pool, and interface jobs in the event
/// loop of the QCoreApplication.
platform::Executor qtExecutor();

/// Runs `work()` in the background, then calls `publish(*model, result)` on the interface thread. If the
/// model has been destroyed, drops the result. `work` must not access the model, so it captures copies.
template <class Model, class Work, class Publish>
void runInBackground(const platform::Executor& executor, Model* model, Work work, Publish publish) {
    executor.background([executor, model = QPointer<Model>(model), work = std::move(work),
                         publish = std::move(publish)]() mutable {
        // Shared because executors copy jobs and results may be large.
        auto value = std::make_shared<decltype(work())>(work());
        executor.interfaceThread([model = std::move(model), value, publish = std::move(publish)]() mutable {
            if (model)
                publish(*model, std::move(*value));
        });
    });
}

/// Destroys a value in the background, since that takes long for a million items. If others share what it
/// points to, only gives up its share.
template <class Value>
void discard(const platform::Executor& executor, Value value) {
    // Shared because executors copy jobs.
    executor.background([discarded = std::make_shared<Value>(std::move(value))] {});
}
