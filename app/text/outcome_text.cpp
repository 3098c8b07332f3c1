#include "app/text/outcome_text.h"

#include "app/i18n/localizer.h"
#include "app/text/display.h"
#include "core/removal/reason_key.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

using ReasonKey = std::string_view (*)(const platform::Error&);
using ReasonCounts = std::map<std::string_view, int>; ///< by translation key

constexpr std::string_view alreadyGone = "err_trash_already_gone";

template <class Failure>
ReasonCounts countReasons(const std::vector<Failure>& failures, ReasonKey reasonKey) {
    ReasonCounts counts;
    for (const Failure& failure : failures)
        ++counts[reasonKey(failure.error)];
    return counts;
}

/// Returns the reasons, the most frequent first.
QString reasons(const ReasonCounts& counts) {
    std::vector<std::pair<std::string_view, int>> sorted(counts.begin(), counts.end());
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const auto& a, const auto& b) { return a.second > b.second; });
    QStringList texts;
    for (const auto& [key, count] : sorted) {
        const QString text = tr(display::text(key));
        texts.append(sorted.size() == 1 ? text : u"%1 (%2)"_s.arg(text, display::count(count)));
    }
    return texts.join(u", "_s);
}

/// Returns how many entries failed and why, and how many were left after a stop, each with the text of its
/// key.
QString sentences(const ReasonCounts& failed, const QString& failedKey, const std::vector<std::string>& left,
                  const QString& leftKey) {
    std::int64_t failedCount = 0;
    for (const auto& [key, count] : failed)
        failedCount += count;
    QStringList sentences;
    if (failedCount > 0)
        sentences.append(outcome::counted(failedKey, failedCount).arg(reasons(failed)));
    if (!left.empty())
        sentences.append(outcome::counted(leftKey, static_cast<std::int64_t>(left.size())));
    return outcome::joined(sentences);
}

} // namespace

QString outcome::counted(const QString& key, std::int64_t number) {
    return tr(key, number).arg(display::count(number));
}

QString outcome::joined(QStringList sentences) {
    sentences.removeAll(QString());
    return sentences.join(u'\n');
}

QString outcome::reason(const platform::Error& error) {
    return tr(display::text(core::LumvaleScanner::deletionReasonKey(error)));
}

bool outcome::isGone(const platform::Error& error) {
    return core::LumvaleScanner::deletionReasonKey(error) == alreadyGone;
}

QString outcome::putBackReason(const platform::Error& error) {
    return tr(display::text(core::LumvaleScanner::putBackReasonKey(error)));
}

QString outcome::deleted(std::size_t moved, std::size_t removed) {
    QStringList texts;
    if (moved > 0)
        texts.append(QString::number(moved) + u' ' + tr(u"deleted_confirmation"_s));
    if (removed > 0)
        texts.append(QString::number(removed) + u' ' + tr(u"trash_emptied_confirmation"_s));
    return texts.join(u" · "_s);
}

QString outcome::stayed(const core::DeletionOutcome& deletion) {
    ReasonCounts failed = countReasons(deletion.failed, core::LumvaleScanner::deletionReasonKey);
    const auto gone = failed.extract(alreadyGone);
    return joined({gone ? counted(u"already_gone"_s, gone.mapped()) : QString(),
                   sentences(failed, u"stayed"_s, deletion.left, u"removal_stopped"_s)});
}

QString outcome::notPutBack(const core::PutBackOutcome& putBack) {
    return sentences(countReasons(putBack.failed, core::LumvaleScanner::putBackReasonKey),
                     u"put_back_failed"_s, putBack.left, u"put_back_stopped"_s);
}

QString outcome::trashNote(const core::TrashReport& report) {
    if (report.couldNotAccess)
        return {};
    if (!report.left.empty())
        return counted(u"removal_stopped"_s, static_cast<std::int64_t>(report.left.size()));
    return report.succeeded + report.failed == 0 ? tr(u"trash_already_empty"_s) : QString();
}

QString outcome::trashWarning(const core::TrashReport& report, bool isDiskReadOnly) {
    if (report.couldNotAccess)
        return u"⚠️ "_s + tr(u"alert_empty_trash_access_hint"_s);
    if (report.failed == 0)
        return {};
    // The hint of the other text is about permissions.
    if (isDiskReadOnly)
        return u"⚠️ "_s + counted(u"stayed"_s, report.failed).arg(tr(u"err_read_only"_s));
    return u"⚠️ "_s + QString::number(report.failed) + u' ' + tr(u"alert_empty_trash_failed_hint"_s);
}
