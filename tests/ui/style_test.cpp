#include "tests/ui/window_test.h"

#include <QColor>
#include <QDirIterator>
#include <QFile>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QRegularExpression>
#include <QSet>
#include <QSignalSpy>

#include <algorithm>
#include <cmath>
#include <memory>

namespace {

/// How far two colours are apart for the eye, from 1 to 21.
double contrast(const QColor& a, const QColor& b) {
    const auto luminance = [](const QColor& color) {
        const auto linear = [](double value) {
            return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF())
               + 0.0722 * linear(color.blueF());
    };
    const auto [dark, light] = std::minmax({luminance(a), luminance(b)});
    return (light + 0.05) / (dark + 0.05);
}

} // namespace

/// The look that all screens share, asked in QML as the screens ask.
class StyleTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void canBeRead_data();
    void canBeRead();
    void hasADrawingForEverySymbol();
    void drawsTheTypeScale();
    void setsFiguresInColumnsWhereTheScriptAllows_data();
    void setsFiguresInColumnsWhereTheScriptAllows();
    void standsButtonsOnWholePixels();
    void judgesHealthByItsBands();
    void drawsAnArcAlsoWithoutShaders();
    void drawsNothingWhileNothingMoves();
    void standsStillUnseen_data();
    void standsStillUnseen();

private:
    /// The object that this QML makes.
    std::unique_ptr<QObject> make(const QByteArray& qml, const QVariantMap& properties = {});
    QVariant value(const QByteArray& expression);

    /// How many frames the window draws in a while.
    int framesInAWhile() const;

    TemporaryDisk m_disk;
    HistoryStore m_history{m_disk.disk()};
    LumvaleWindow m_lumvale{m_disk.disk(), m_history, qtExecutor(), m_disk.disk()};
};

std::unique_ptr<QObject> StyleTest::make(const QByteArray& qml, const QVariantMap& properties) {
    QQmlComponent component(qmlEngine(m_lumvale.window()));
    component.setData("import QtQuick\nimport Lumvale\nimport Lumvale.Style\n" + qml, QUrl());
    std::unique_ptr<QObject> object(component.createWithInitialProperties(properties));
    if (!object)
        qFatal("%s", qPrintable(component.errorString()));
    return object;
}

QVariant StyleTest::value(const QByteArray& expression) {
    return make("QtObject { property var value: " + expression + " }")->property("value");
}

int StyleTest::framesInAWhile() const {
    const QSignalSpy frames(m_lumvale.window(), &QQuickWindow::frameSwapped);
    QTest::qWait(300);
    return static_cast<int>(frames.count());
}

void StyleTest::canBeRead_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("ground");
    const auto add = [](const QByteArray& text, const QByteArray& ground) {
        QTest::newRow(text + " on " + ground) << text << ground;
    };
    for (const char* text : {"textPrimary", "textSecondary", "glowTeal", "danger"})
        for (const char* ground : {"bgTop", "bgBottom", "dialog"})
            add(text, ground);
    for (const char* ground : {"deepTeal", "glowTeal", "danger", "dangerLight"})
        add("ink", ground);
    // Of a button that is disabled, where the backdrop is brightest.
    add("faded", "mix(GCColor.mix(GCColor.bgTop, GCColor.glowTeal, 0.14), GCColor.glowTeal, 0.22)");
}

void StyleTest::canBeRead() {
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, ground);
    const auto below = value("GCColor." + ground).value<QColor>();
    const QByteArray shown =
        "GCColor.mix(GCColor." + ground + ", GCColor." + text + ", GCColor." + text + ".a)";
    QVERIFY(contrast(value(shown).value<QColor>(), below) >= 4.5);
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

void StyleTest::drawsTheTypeScale() {
    const auto width = [this](const QByteArray& font) {
        return make("Text { text: 'Wide enough to tell'; font" + font + " }")->property("contentWidth");
    };
    // Measured as it is drawn: the size that a font says it has is not always that.
    const std::pair<QByteArray, const char*> sizes[] = {{"title", "26"}, {"loading", "15"}, {"row", "14"},
                                                        {"body", "13"},  {"caption", "12"}, {"fine", "11"}};
    for (const auto& [font, pixels] : sizes)
        QCOMPARE(width(": Type." + font),
                 width(".weight: Type." + font + ".weight; font.pixelSize: " + pixels));
}

void StyleTest::setsFiguresInColumnsWhereTheScriptAllows_data() {
    QTest::addColumn<QString>("size");
    QTest::addColumn<bool>("isSevered");
    QTest::newRow("Latin") << "4,2\u00a0Go" << true;
    QTest::newRow("Cyrillic") << "1,31\u00a0ГБ" << true;
    QTest::newRow("Greek") << "17 ψηφιολέξεις" << true;
    QTest::newRow("Arabic") << "١٫٣١ غيغابايت" << false;
    QTest::newRow("Hebrew") << "\u200f1.31 ג״ב" << false;
    QTest::newRow("a mark on its letter") << "17 e\u0301" << false;
}

void StyleTest::setsFiguresInColumnsWhereTheScriptAllows() {
    QFETCH(QString, size);
    QFETCH(bool, isSevered);
    const auto object = make("Figure { }", {{"text", size}});
    const auto* figure = qobject_cast<QQuickItem*>(object.get());
    QStringList pieces;
    for (const QQuickItem* piece : figure->childItems())
        if (piece->inherits("QQuickText"))
            pieces.append(piece->property("text").toString());
    QCOMPARE(pieces.join(""), size);
    QCOMPARE(pieces.size() > 1, isSevered);
    // Every digit takes the room of any other.
    const auto width = [this](const char* text) {
        return qobject_cast<QQuickItem*>(make("Figure { }", {{"text", text}}).get())->implicitWidth();
    };
    QCOMPARE(width("111"), width("888"));
    // And a row that is used again for another size has nothing to complain of.
    QTest::failOnWarning(QRegularExpression("."));
    for (const char* other : {"150 KB", "1.5 KB", "150 KB"})
        QVERIFY(object->setProperty("text", other));
}

void StyleTest::standsButtonsOnWholePixels() {
    bool isAnyTextFractional = false;
    for (const char* type : {"GradientButton", "QuietButton"}) {
        for (const char* text : {"Analyser", "Cancel", "Vider la corbeille", "Move to Trash"}) {
            const auto object = make(type + QByteArray(" { }"), {{"text", text}});
            const auto* content = object->property("contentItem").value<QQuickItem*>();
            const double width = qobject_cast<QQuickItem*>(object.get())->implicitWidth();
            QCOMPARE(width, std::round(width));
            isAnyTextFractional |= content->implicitWidth() != std::round(content->implicitWidth());
        }
    }
    QVERIFY(isAnyTextFractional); // or this would show nothing
}

void StyleTest::judgesHealthByItsBands() {
    const struct {
        int score;
        const char* key;
        const char* color;
    } bands[] = {
        {100, "health_excellent", "glowTeal"}, {85, "health_excellent", "glowTeal"},
        {84, "health_good", "glowTeal"},       {65, "health_good", "glowTeal"},
        {64, "health_watch", "amber"},         {40, "health_watch", "amber"},
        {39, "health_clean", "danger"},        {0, "health_clean", "danger"},
        {101, "health_clean", "glowTeal"},
    };
    for (const auto& [score, key, color] : bands) {
        const auto card = make(
            "HealthCard { freeDisk: '1 GB'; totalDisk: '2 GB'; score: " + QByteArray::number(score) + " }");
        QCOMPARE(card->findChild<QObject*>("healthLabel")->property("text").toString(), translated(key));
        QCOMPARE(card->property("healthColor").value<QColor>(),
                 value("GCColor." + QByteArray(color)).value<QColor>());
    }
}

void StyleTest::drawsAnArcAlsoWithoutShaders() {
    const auto object = make("Ring { x: 400; y: 300; width: 80; height: 80; lineWidth: 10; share: 0.5 }");
    qobject_cast<QQuickItem*>(object.get())->setParentItem(m_lumvale.window()->contentItem());
    const auto brightnessAt = [this](int x, int y) {
        return m_lumvale.window()->grabWindow().pixelColor(x, y).value();
    };
    QTRY_VERIFY(brightnessAt(480, 340) > 200);
    QVERIFY(brightnessAt(400, 340) < 100);
}

void StyleTest::drawsNothingWhileNothingMoves() {
    const Driver driver(*m_lumvale.window());
    QVERIFY(QTest::qWaitForWindowExposed(m_lumvale.window()));
    QVERIFY(driver.click("tab_history"));
    QTRY_COMPARE(framesInAWhile(), 0);
    QVERIFY(driver.click("tab_cleanup")); // with the title that breathes
    QVERIFY(framesInAWhile() > 3);
}

void StyleTest::standsStillUnseen_data() {
    QTest::addColumn<QWindow::Visibility>("visibility");
    QTest::newRow("hidden") << QWindow::Hidden;
    QTest::newRow("minimised") << QWindow::Minimized;
}

void StyleTest::standsStillUnseen() {
    QFETCH(QWindow::Visibility, visibility);
    QVERIFY(QTest::qWaitForWindowExposed(m_lumvale.window()));
    const QQuickItem* title = Driver(*m_lumvale.window()).item("title");
    QVERIFY(title);
    const QSignalSpy breaths(title, SIGNAL(phaseChanged()));
    m_lumvale.window()->setVisibility(visibility);
    QTest::qWait(100); // what was on its way
    const auto before = breaths.count();
    QCOMPARE(framesInAWhile(), 0);
    QCOMPARE(breaths.count(), before);
    QVERIFY(title->isVisible()); // which is why it is not enough to ask it
    m_lumvale.window()->setVisibility(QWindow::Windowed);
    QTRY_VERIFY(framesInAWhile() > 3 && breaths.count() > before + 3);
}

int main(int argc, char** argv) {
    return runTest<StyleTest>(argc, argv);
}

#include "style_test.moc"
