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

/// Returns the reasons of the failures, the most frequent first.
template <class Failure>
QString reasons(const std::vector<Failure>& failures, ReasonKey reasonKey) {
    std::map<std::string_view, int> counts;
    for (const Failure& failure : failures)
        ++counts[reasonKey(failure.error)];
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
template <class Failure>
QString sentences(const std::vector<Failure>& failures, ReasonKey reasonKey, const QString& failedKey,
                  const std::vector<std::string>& left, const QString& leftKey) {
    QStringList sentences;
    if (!failures.empty())
        sentences.append(outcome::counted(failedKey, static_cast<std::int64_t>(failures.size()))
                             .arg(reasons(failures, reasonKey)));
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
    return core::LumvaleScanner::deletionReasonKey(error) == "err_trash_already_gone";
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
    std::vector<core::DeletionFailure> failed = deletion.failed;
    const auto gone =
        std::erase_if(failed, [](const core::DeletionFailure& failure) { return isGone(failure.error); });
    return joined({gone > 0 ? counted(u"already_gone"_s, static_cast<std::int64_t>(gone)) : QString(),
                   sentences(failed, core::LumvaleScanner::deletionReasonKey, u"stayed"_s, deletion.left,
                             u"removal_stopped"_s)});
}

QString outcome::notPutBack(const core::PutBackOutcome& putBack) {
    return sentences(putBack.failed, core::LumvaleScanner::putBackReasonKey, u"put_back_failed"_s,
                     putBack.left, u"put_back_stopped"_s);
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
