#include "app/models/type_ahead.h"

#include <algorithm>

namespace {

/// Returns a letter without case and accents.
QChar baseLetter(QChar letter) {
    while (letter.decompositionTag() == QChar::Canonical) {
        const QString parts = letter.decomposition();
        if (parts.size() > 1 && !parts[1].isMark())
            break; // a syllable of several letters
        letter = parts[0];
    }
    return letter.toCaseFolded();
}

QString baseLetters(QString text) {
    text.removeIf([](QChar c) { return c.isMark(); });
    for (QChar& c : text)
        c = baseLetter(c);
    return text;
}

/// Finds names that begin with a text.
class NameSearch {
public:
    NameSearch(const QAbstractItemModel& model, const QString& text)
        : m_model(model), m_nameRole(model.roleNames().key("name", -1)), m_letters(baseLetters(text)) {}

    /// Returns the first match in the rows from `first` on, and then in those before it.
    QModelIndex find(int first) const {
        const int rows = m_model.rowCount();
        for (int i = 0; i < rows; ++i)
            if (const QModelIndex found = findIn(m_model.index((first + i) % rows, 0)); found.isValid())
                return found;
        return {};
    }

private:
    /// Returns the row, or its first child, whose name matches.
    QModelIndex findIn(const QModelIndex& row) const {
        if (matches(row))
            return row;
        const int children = m_model.rowCount(row);
        for (int i = 0; i < children; ++i)
            if (const QModelIndex child = m_model.index(i, 0, row); matches(child))
                return child;
        return {};
    }

    bool matches(const QModelIndex& index) const {
        // Letter by letter: most names differ in the first one.
        qsizetype matched = 0;
        for (const QChar c : m_model.data(index, m_nameRole).toString()) {
            if (c.isMark())
                continue;
            if (matched == m_letters.size() || baseLetter(c) != m_letters[matched])
                break;
            ++matched;
        }
        return matched == m_letters.size();
    }

    const QAbstractItemModel& m_model;
    int m_nameRole;
    QString m_letters;
};

} // namespace

TypeAhead::TypeAhead(QObject* parent) : QObject(parent) {
    m_pause.setSingleShot(true);
    connect(&m_pause, &QTimer::timeout, this, &TypeAhead::clear);
}

QModelIndex TypeAhead::type(const QAbstractItemModel* model, const QString& letters, int currentRow) {
    m_text += letters;
    const bool isOneLetter =
        std::all_of(m_text.cbegin(), m_text.cend(), [&](QChar c) { return c == m_text[0]; });
    const NameSearch search(*model, isOneLetter ? m_text.left(1) : m_text);
    const QModelIndex found = search.find(std::max(0, isOneLetter ? currentRow + 1 : currentRow));
    m_hasMatch = found.isValid();
    m_pause.start();
    Q_EMIT textChanged();
    return found;
}

void TypeAhead::clear() {
    m_pause.stop();
    m_text.clear();
    Q_EMIT textChanged();
}
