#include "tests/ui/window_test.h"

#include <QDirIterator>
#include <QFile>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QRegularExpression>
#include <QSet>

#include <memory>

/// The components of the style module, made from QML.
class StyleTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void hasADrawingForEverySymbol();
    void drawsFiguresInEveryScript();
    void drawsAnArcAlsoWithoutShaders();

private:
    std::unique_ptr<QQuickItem> make(const QByteArray& qml);

    TemporaryDisk m_disk;
    HistoryStore m_history{m_disk.disk()};
    LumvaleWindow m_lumvale{m_disk.disk(), m_history, qtExecutor(), m_disk.disk()};
};

std::unique_ptr<QQuickItem> StyleTest::make(const QByteArray& qml) {
    QQmlComponent component(qmlEngine(m_lumvale.window()));
    component.setData("import QtQuick\nimport Lumvale.Style\n" + qml, QUrl());
    std::unique_ptr<QQuickItem> item(qobject_cast<QQuickItem*>(component.create()));
    if (!item)
        qFatal("%s", qPrintable(component.errorString()));
    return item;
}

void StyleTest::hasADrawingForEverySymbol() {
    static const QRegularExpression named(R"((?<![.\w])(?:symbols?|name)\s*:\s*(\[[^\]]*\]|[^,}\n]*))");
    static const QRegularExpression text(R"#("([^"]+)")#");
    QSet<QString> symbols;
    for (QDirIterator files(":/qml", {"*.qml"}, QDir::Files, QDirIterator::Subdirectories);
         files.hasNext();) {
        QFile file(files.next());
        QVERIFY(file.open(QFile::ReadOnly));
        const QString source = file.readAll();
        for (auto uses = named.globalMatch(source); uses.hasNext();)
            for (auto names = text.globalMatch(uses.next().captured(1)); names.hasNext();)
                symbols.insert(names.next().captured(1));
    }
    QVERIFY(symbols.contains("checkmark"));
    for (const QString& symbol : symbols)
        QVERIFY2(QFile::exists(":/qml/Lumvale/Style/symbols/" + symbol + ".svg"), qPrintable(symbol));
}

void StyleTest::drawsFiguresInEveryScript() {
    QTest::failOnWarning(QRegularExpression("."));
    const auto figure = make("TabularText { text: '' }");
    // Joined letters, combining marks and right-to-left texts must not be split into characters.
    const std::pair<const char*, bool> sizes[]{
        {"4,2\u00a0Go", true}, {"17 ψηφιολέξεις", true}, {"١٫٣١ غيغابايت", false}, {"17 e\u0301", false}};
    for (const auto& [size, isSplit] : sizes) {
        QVERIFY(figure->setProperty("text", size));
        QCOMPARE(Driver::texts(*figure), QStringList(size));
        QCOMPARE(figure->childItems().size() > 2, isSplit); // the repeater and the texts
    }
    QCOMPARE(make("TabularText { text: '111' }")->implicitWidth(),
             make("TabularText { text: '888' }")->implicitWidth());
}

void StyleTest::drawsAnArcAlsoWithoutShaders() {
    const auto ring = make("Ring { x: 400; y: 300; width: 80; height: 80; lineWidth: 10; share: 0.5 }");
    ring->setParentItem(m_lumvale.window()->contentItem());
    const auto brightnessAt = [this](int x, int y) {
        return m_lumvale.window()->grabWindow().pixelColor(x, y).value();
    };
    QTRY_VERIFY(brightnessAt(480, 340) > 200);
    QVERIFY(brightnessAt(400, 340) < 100);
}

int main(int argc, char** argv) {
    return runTest<StyleTest>(argc, argv);
}

#include "style_test.moc"
