#include "app/text/outcome_text.h"

#include "app/i18n/localizer.h"
#include "app/text/display.h"
#include "core/removal/reason_key.h"

#include <QStringList>

#include <algorithm>
#include <map>
#include <string_view>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// Returns the reasons of the failures, the most frequent first.
QString reasons(const std::vector<core::DeletionFailure>& failures) {
    std::map<std::string_view, int> counts;
    for (const core::DeletionFailure& failure : failures)
        ++counts[core::LumvaleScanner::deletionReasonKey(failure.error)];
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

} // namespace

QString outcome::counted(const QString& key, std::int64_t number) {
    return tr(key, number).arg(display::count(number));
}

QString outcome::reason(const platform::Error& error) {
    return tr(display::text(core::LumvaleScanner::deletionReasonKey(error)));
}

QString outcome::stayed(const core::DeletionOutcome& deletion) {
    QStringList sentences;
    if (!deletion.failed.empty())
        sentences.append(counted(u"stayed"_s, static_cast<std::int64_t>(deletion.failed.size()))
                             .arg(reasons(deletion.failed)));
    if (!deletion.left.empty())
        sentences.append(counted(u"removal_stopped"_s, static_cast<std::int64_t>(deletion.left.size())));
    return sentences.join(u'\n');
}
