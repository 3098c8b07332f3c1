#include "app/models/type_ahead.h"
#include "app/models/uninstall_view_model.h"
#include "tests/ui/window_test.h"
#include "ui/style/reduced_motion.h"

#include <algorithm>
#include <limits>

/// The uninstall screen in the real window, on real files.
class UninstallTest : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void uninstallsTickedFilesOfTheChosenApp();
    void uninstallsUntilNoAppIsLeft();
    void letsRemovedRowsFade();

private:
    void choose(const QString& app); ///< as a screen reader does
    void type(char letter);
    QString banner(const QString& app) { return "✓ « " + app + " » " + translated("uninstalled_suffix"); }
};

void UninstallTest::init() {
    WindowTest::init();
    m_disk->make({"/Applications/Notes.app/x 1000", "/Applications/Paint.app/x 2000",
                  "/Applications/Solo.app/x 300", "~/Library/Caches/notes/x 10", "~/Library/Logs/notes 200",
                  "~/Library/Logs/paint 30", "~/Library/Preferences/com.paint-notes.plist 4",
                  "~/Library/Preferences/other 9"});
    open();
    QVERIFY(m_driver->click("tab_uninstall"));
    QTRY_COMPARE(drawn(), (QStringList{"Notes | 1 KB", "Paint | 2 KB", "Solo | 300 bytes"}));
}

void UninstallTest::choose(const QString& app) {
    press(told(m_driver->row(app)));
    QTRY_VERIFY(m_driver->isShown("filesList"));
    layOut();
}

void UninstallTest::type(char letter) {
    for (TypeAhead* const typeAhead : window()->findChildren<TypeAhead*>())
        typeAhead->setPause(std::numeric_limits<int>::max()); // on a loaded machine too
    QTest::keyClick(window(), letter);
}

void UninstallTest::uninstallsTickedFilesOfTheChosenApp() {
    QVERIFY(m_driver->text("screenSubtitle").startsWith(translated("word_free_space") + " : "));
    QVERIFY(!m_driver->isShown("uninstalledLabel"));
    QCOMPARE(told(m_driver->row("Paint"))->text(QAccessible::Name), "Paint, 2 KB");
    choose("Paint");
    m_driver->key(Qt::Key_Escape);
    QVERIFY(hasFocus("appsList"));
    type('s');
    QCOMPARE(current(), "Solo");
    type('n');
    QCOMPARE(m_driver->text("typedText"), translated("typed_not_found").arg("sn"));
    m_driver->key(Qt::Key_Escape);
    QVERIFY(!m_driver->isShown("typedText"));
    QVERIFY(m_driver->click("sort_by_size"));
    QCOMPARE(drawn(), (QStringList{"Paint | 2 KB", "Notes | 1 KB", "Solo | 300 bytes"}));
    QCOMPARE(current(), "Solo");
    QVERIFY(told("sort_by_size")->state().checked && !told("sort_by_name")->state().checked);
    QVERIFY(m_driver->click("sort_by_name"));
    m_disk->make("~/Library/Cookies/<i>paint & co 5");
    choose("Paint");
    QCOMPARE(told(m_driver->rows().at(3))->text(QAccessible::Name), "<i>paint & co, 5 bytes");
    const QList<QQuickItem*> texts = m_driver->rows().at(3)->findChildren<QQuickItem*>();
    QVERIFY(std::ranges::any_of(texts, [](const QQuickItem* text) {
        const QString styled = text->property("drawn").toString();
        return styled.startsWith("&lt;i&gt;<b>") && styled.endsWith("paint</font></b>\u00a0&amp; co");
    }));
    type('p'); // "paint" below the application
    QCOMPARE(current(), "paint");
    m_driver->key(Qt::Key_Space); // belongs to the text
    QCOMPARE(m_driver->text("typedText"), translated("typed_not_found").arg("p "));
    QCOMPARE(ticks(), "++++");
    m_driver->key(Qt::Key_Escape);
    m_driver->key(Qt::Key_Space);
    QCOMPARE(ticks(), "++-+");
    QVERIFY(m_driver->click("backButton") && hasFocus("appsList"));

    choose("Notes");
    QCOMPARE(ticks(), "++++");
    m_driver->click(*m_driver->rows().at(3));
    QCOMPARE(ticks(), "+++-");
    QCOMPARE(drawn().at(0), "Notes | " + translated("app_itself") + " | 1 KB");
    QVERIFY(drawn().at(3).startsWith("notes | " + translated("exp_app_logs") + " | 200 bytes | "));
    const QString selected = "3 " + translated("selected_count_suffix") + " · 1 KB";
    QCOMPARE(m_driver->text("selectionLabel"), selected);
    QVERIFY(m_driver->click("deleteButton"));
    QTRY_COMPARE(m_driver->text("dialogMessage"),
                 "« Notes » : " + selected + '\n' + translated("alert_confirm_delete_message"));
    QVERIFY(m_driver->click("confirm"));
    QTRY_COMPARE(drawn(), (QStringList{"Paint | 2 KB", "Solo | 300 bytes"}));
    for (const char* path : {"~/.Trash/Notes.app/x", "~/.Trash/notes/x", "~/.Trash/com.paint-notes.plist",
                             "~/Library/Logs/notes", "~/Library/Logs/paint", "/Applications/Paint.app/x"})
        QVERIFY2(m_disk->exists(path), path);
    QCOMPARE(announced("uninstalledLabel"), banner("Notes"));
    QCOMPARE(m_driver->text("uninstalledFreeSpace"), m_driver->text("screenSubtitle"));

    QVERIFY(m_driver->click("putBackButton"));
    QTRY_COMPARE(drawn(), (QStringList{"Notes | 1 KB", "Paint | 2 KB", "Solo | 300 bytes"}));
    QVERIFY(m_disk->exists("/Applications/Notes.app/x") && m_history->entries().empty());
    QCOMPARE(announced("uninstalledLabel"), ::tr(QStringLiteral("put_back_done"), 3).arg(3));
}

void UninstallTest::uninstallsUntilNoAppIsLeft() {
    m_disk->setMode("/Applications", 0555);
    choose("Solo");
    confirm("deleteButton");
    QTRY_COMPARE(announced("stayedLabel"),
                 translated("app_stayed").arg("Solo", translated("err_not_allowed")));
    m_disk->setMode("/Applications", 0755);
    for (const char* app : {"Solo", "Notes", "Paint"}) {
        choose(app);
        const bool hasFiles = app != QLatin1String("Solo");
        QCOMPARE(m_driver->isShown("filesHeading"), hasFiles);
        QCOMPARE(m_driver->text("noFiles"), hasFiles ? "" : translated("no_leftovers_found"));
        confirm("deleteButton");
        QCOMPARE(announced("uninstalledLabel"), banner(app));
    }
    QVERIFY(!m_driver->isShown("appsList"));
    QCOMPARE(m_driver->text("emptyPrompt"), translated("storage_breakdown_empty"));
}

void UninstallTest::letsRemovedRowsFade() {
    for (const char digit : std::string("0123456789"))
        for (const char other : std::string("abcde"))
            m_disk->make({std::string("/Applications/A") + digit + other + ".app/x 1"});
    m_driver->key(Qt::Key_F5);
    QTRY_COMPARE(current(), "A0a");
    layOut();
    const auto remove = [this](const std::string& app) {
        model<UninstallViewModel>()->appsModel()->remove("/Applications/" + app + ".app");
        layOut();
    };
    const auto told = [this] {
        QStringList names;
        for (int i = 0; i < this->told("appsList")->childCount(); ++i)
            names.append(this->told("appsList")->child(i)->text(QAccessible::Name).section(',', 0, 0));
        return names;
    };
    const std::size_t rowCount = m_driver->rows().size();

    remove("A0a");
    const QQuickItem* const leaving = m_driver->row("A0a");
    QVERIFY(leaving && !told().contains("A0a") && told().contains("A0b"));
    QTest::mouseClick(window(), Qt::RightButton, {}, Driver::center(*leaving));
    layOut();
    QVERIFY(menuEntries().isEmpty());
    remove("A0c"); // while the rows close up
    QTRY_VERIFY(m_driver->isAtRest());
    QCOMPARE(current(), "A0b");
    qreal bottom = Driver::place(*m_driver->row("A0b")).top();
    for (const QQuickItem* row : m_driver->rows()) {
        QCOMPARE(Driver::place(*row).top(), bottom); // no gap, no row on another one
        bottom = Driver::place(*row).bottom();
    }
    QVERIFY(!told().contains("A0c"));

    m_driver->key(Qt::Key_End); // reuses the rows
    layOut();
    QCOMPARE(current(), "Solo");
    QVERIFY(m_driver->rows().size() >= rowCount);
    QVERIFY(std::ranges::all_of(m_driver->rows(), &QQuickItem::isEnabled));

    ReducedMotion::shared().setRequested(true);
    remove("Solo");
    QVERIFY(!m_driver->row("Solo"));
    QCOMPARE(current(), "Paint");
    ReducedMotion::shared().setRequested(false);
}

int main(int argc, char** argv) {
    return runTest<UninstallTest>(argc, argv);
}

#include "uninstall_test.moc"
