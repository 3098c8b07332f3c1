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
