#pragma once

#include "core/removal/deletion.h"
#include "core/removal/put_back.h"

#include <cstdint>

#include <QString>
#include <QStringList>

/// Sentences in the interface language about what an operation does or did.
namespace outcome {

/// Returns the text of `key` in the plural form for this number, which replaces %1.
QString counted(const QString& key, std::int64_t number);

/// Returns the sentences that are not empty, one a line.
QString joined(QStringList sentences);

/// Returns the reason why an entry could not be deleted.
QString reason(const platform::Error& error);

/// Returns whether an entry could not be deleted because it no longer existed.
bool isGone(const platform::Error& error);

/// Returns the reason why an entry could not be put back.
QString putBackReason(const platform::Error& error);

/// Returns how many entries stayed where they were and why, the most frequent reason first, with the number
/// of entries for each if there are several; how many no longer existed; and how many are left after a
/// stop. Empty if everything was deleted.
QString stayed(const core::DeletionOutcome& deletion);

/// Returns the same for entries that were not put back. Empty if all were.
QString notPutBack(const core::PutBackOutcome& putBack);

} // namespace outcome
