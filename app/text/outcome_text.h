#pragma once

#include "core/removal/deletion.h"
#include "core/removal/put_back.h"
#include "core/removal/trash.h"

#include <cstddef>
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

/// Returns how many entries were moved to the Trash and how many were removed permanently.
QString deleted(std::size_t moved, std::size_t removed);

/// Returns how many entries stayed where they were and why, the most frequent reason first, with the number
/// of entries for each if there are several; how many no longer existed; and how many are left after a
/// stop. Empty if everything was deleted.
QString stayed(const core::DeletionOutcome& deletion);

/// Returns the same for entries that were not put back. Empty if all were.
QString notPutBack(const core::PutBackOutcome& putBack);

/// Returns that the Trash was empty, or how many of its entries are left after a stop; otherwise nothing.
QString trashNote(const core::TrashReport& report);

/// Returns that the Trash could not be listed, or how many of its entries could not be removed, with what the
/// user can do. Empty if everything was removed.
QString trashWarning(const core::TrashReport& report, bool isDiskReadOnly);

} // namespace outcome
