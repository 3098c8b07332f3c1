#include "app/models/type_ahead.h"
#include "app/models/scan_items_model.h"
#include "bench/times.h"

#include <QCoreApplication>

#include <cstdio>

// Measures the CPU time of the search of a long list for a name that no row begins with, which examines every
// row.

namespace {

void measure(const char* what, const std::string& stem, const QString& typed) {
    constexpr int rows = 100'000;
    constexpr int rounds = 21;
    std::vector<core::ScanItem> items;
    for (int row = 0; row < rows; ++row)
        items.emplace_back("/Users/me/Library/Caches/" + stem + std::to_string(row), 1,
                           core::ScanCategory::cache, "exp_cache", true, std::nullopt);
    ScanItemsModel model;
    model.setItems(std::move(items));
    std::vector<double> times;
    for (int round = 0; round < rounds; ++round) {
        TypeAhead typeAhead;
        const double start = threadMilliseconds();
        typeAhead.type(&model, typed, 0);
        times.push_back(threadMilliseconds() - start);
    }
    std::printf("%s: median %.1f ms, most %.1f ms\n", what, median(times), quantile(times, 1));
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv); // for the timer

    measure("100,000 names in ASCII", "com.example.application.cache", QStringLiteral("x"));
    measure("100,000 names with accents", "Éléphant à vélo dépassé ", QStringLiteral("elephants"));
    measure("100,000 names in Cyrillic", "Ёлочные игрушки ", QStringLiteral("елочныеигры"));
}
