#include "app/text/health_text.h"
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
#include <utility>
#include <vector>

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
    void canBeRead();
    void hasADrawingForEverySymbol();
    void setsFiguresInColumnsWhereTheScriptAllows();
    void standsButtonsOnWholePixels();
    void keepsWhatIsBeneathATextOnWholePixels();
    void judgesHealthByItsBands();
    void drawsAnArcAlsoWithoutShaders();
    void drawsNothingWhileNothingMoves();
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

void StyleTest::canBeRead() {
    std::vector<std::pair<QByteArray, QByteArray>> pairs;
    for (const char* text : {"textPrimary", "textSecondary", "glowTeal", "danger"})
        for (const char* ground : {"bgTop", "bgBottom", "dialog"})
            pairs.emplace_back(text, ground);
    for (const char* ground : {"deepTeal", "glowTeal", "danger", "dangerLight"})
        pairs.emplace_back("ink", ground);
    // Of a button that is disabled, where the backdrop is brightest.
    pairs.emplace_back("faded",
                       "mix(GCColor.mix(GCColor.bgTop, GCColor.glowTeal, 0.14), GCColor.glowTeal, 0.22)");
    for (const auto& [text, ground] : pairs) {
        const auto below = value("GCColor." + ground).value<QColor>();
        const auto shown =
            value("GCColor.mix(GCColor." + ground + ", GCColor." + text + ", GCColor." + text + ".a)");
        QVERIFY2(contrast(shown.value<QColor>(), below) >= 4.5, text + " on " + ground);
    }
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

void StyleTest::setsFiguresInColumnsWhereTheScriptAllows() {
    const std::pair<const char*, bool> sizes[] = {
        {"4,2\u00a0Go", true},    {"1,31\u00a0ГБ", true},    {"17 ψηφιολέξεις", true},
        {"١٫٣١ غيغابايت", false}, {"\u200f1.31 ג״ב", false}, {"17 e\u0301", false},
    };
    // A row that is used again for another size has nothing to complain of.
    QTest::failOnWarning(QRegularExpression("."));
    const auto object = make("TabularText { }", {{"text", ""}});
    const auto* figure = qobject_cast<QQuickItem*>(object.get());
    for (const auto& [size, isSplit] : sizes) {
        QVERIFY(object->setProperty("text", size));
        QStringList pieces;
        for (const QQuickItem* piece : figure->childItems())
            if (piece->inherits("QQuickText"))
                pieces.append(piece->property("text").toString());
        QCOMPARE(pieces.join(""), QString(size));
        QCOMPARE(pieces.size() > 1, isSplit);
    }
    // Every digit takes the room of any other.
    const auto width = [this](const char* text) {
        return qobject_cast<QQuickItem*>(make("TabularText { }", {{"text", text}}).get())->implicitWidth();
    };
    QCOMPARE(width("111"), width("888"));
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

void StyleTest::keepsWhatIsBeneathATextOnWholePixels() {
    for (const double lineHeight : {1.2, 1.35}) {
        const auto label = make("Label { text: 'One\\nTwo' }", {{"lineHeight", lineHeight}});
        const auto* item = qobject_cast<QQuickItem*>(label.get());
        QVERIFY(item->implicitHeight() != std::round(item->implicitHeight())); // or this would show nothing
        QCOMPARE(item->height(), std::ceil(item->implicitHeight()));
    }
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
        {101, "health_clean", "danger"},
    };
    for (const auto& [score, key, color] : bands) {
        core::HealthScore health;
        health.score = score;
        const QString labelKey = display::healthKey(health.band());
        const auto card =
            make("HealthCard { score: 50; freeSpaceText: ''; labelKey: '" + labelKey.toLatin1() + "' }");
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
    for (const char* still : {"tab_uninstall", "tab_startup", "tab_history"}) {
        QVERIFY(driver.click(still));
        QTRY_COMPARE(framesInAWhile(), 0);
    }
    QVERIFY(driver.click("tab_cleanup")); // with the title that breathes
    QVERIFY(framesInAWhile() > 3);
}

void StyleTest::standsStillUnseen() {
    QVERIFY(QTest::qWaitForWindowExposed(m_lumvale.window()));
    const QQuickItem* title = Driver(*m_lumvale.window()).item("title");
    QVERIFY(title);
    const QSignalSpy breaths(title, SIGNAL(phaseChanged()));
    for (const QWindow::Visibility unseen : {QWindow::Hidden, QWindow::Minimized}) {
        m_lumvale.window()->setVisibility(unseen);
        QTest::qWait(100); // what was on its way
        const auto before = breaths.count();
        QCOMPARE(framesInAWhile(), 0);
        QCOMPARE(breaths.count(), before);
        QVERIFY(title->isVisible()); // which is why it is not enough to ask it
        m_lumvale.window()->setVisibility(QWindow::Windowed);
        QTRY_VERIFY(framesInAWhile() > 3 && breaths.count() > before + 3);
    }
}

int main(int argc, char** argv) {
    return runTest<StyleTest>(argc, argv);
}

#include "style_test.moc"
