#pragma once

#include "platform/base/executor.h"

#include <QPointer>

#include <memory>
#include <utility>

/// The executor of the running program: Qt's thread pool and the event loop of the application object.
platform::Executor qtExecutor();

/// Runs `work` in the background and hands what it gives to `publish` on the interface thread, with the
/// model; when the model is gone by then, the result is dropped without a trace. `work` must not touch the
/// model: it gets copies of what it needs.
template <class Model, class Work, class Publish>
void runInBackground(const platform::Executor& executor, Model* model, Work work, Publish publish) {
    executor.background([executor, model = QPointer<Model>(model), work = std::move(work),
                         publish = std::move(publish)]() mutable {
        // Shared, since a job is copied on its way while results may be large.
        auto value = std::make_shared<decltype(work())>(work());
        executor.interfaceThread([model = std::move(model), value, publish = std::move(publish)]() mutable {
            if (model)
                publish(*model, std::move(*value));
        });
    });
}
