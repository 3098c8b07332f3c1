#include "app/models/duplicate_photos_view_model.h"
#include "tests/app/hand_cranked.h"
#include "tests/support/photo_catalogue.h"
#include "tests/ui/window_test.h"

#include <QBuffer>
#include <QImage>
#include <QWheelEvent>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

using platform::PhotoAuthorization;

namespace {

QString summary(int groups, const QString& wasted) {
    return QString::number(groups) + " " + translated("duplicates_groups_suffix") + " · " + wasted + " "
           + translated("duplicates_wasted_suffix");
}

/// Whether they can be seen or not.
int tilesBelow(const QQuickItem& item) {
    int count = item.objectName() == "photoTile";
    for (const QQuickItem* child : item.childItems())
        count += tilesBelow(*child);
    return count;
}

} // namespace

/// The duplicates screen as its user meets it: the real window, clicks and keys, a real library.
class DuplicatesTest : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        WindowTest::init();
        m_status = PhotoAuthorization::authorized;
    }
    void cleanup() {
        WindowTest::cleanup();
        m_catalogue.reset();
    }

    void asksForAccessAndSearchesOnceItIsGiven_data();
    void asksForAccessAndSearchesOnceItIsGiven();
    void searchesOnAClick();
    void saysThatNothingIsThereTwice();
    void ticksAnythingButWhatIsKept_data();
    void ticksAnythingButWhatIsKept();
    void deletesWhatIsConfirmedAndOnlyThat();
    void takesNoForAnAnswer();
    void changesNothingWhereTheLibraryRefuses();
    void sendsOneDeletionAtATime();
    void forgetsASearchThatEndsAfterItWasLeft();
    void isWalkedByKeys();
    void scrollsALargeGroup();
    void makesOnlyWhatIsInSight();
    void tellsAScreenReaderWhatIsSeen();
    void showsWhatStandsForAPicture();
    void nothingIsCutOffInAnyLanguage_data() { eachLanguage(); }
    void nothingIsCutOffInAnyLanguage();

private:
    /// Three photos of three million bytes, "A1" to "A3", the second a favourite, and two videos without a
    /// date of two million, "B1" and "B2".
    void fill(CatalogueWriter::Maker maker = CatalogueWriter::Maker::lumvale);
    void add(const std::string& name, const std::string& size, const std::string& created = "700000000");
    /// Opens the window, and in it the duplicates; whoever is asked for access answers so.
    void openDuplicates(const platform::Executor& executor = qtExecutor(),
                        PhotoAuthorization answer = PhotoAuthorization::authorized);
    void search() const; ///< by a click, to its end
    void openSearched() {
        openDuplicates();
        search();
    }
    void walkIn() const; ///< to the list, by Tab

    DuplicatePhotosViewModel* state() const { return model<DuplicatePhotosViewModel>(); }
    std::vector<QQuickItem*> tiles() const { return m_driver->items("photoTile"); }
    QQuickItem* tile(const QString& name) const;
    QQuickItem* checkBox(const QString& name) const; ///< null where the tile has none
    QString ticked() const;                          ///< the names, as the tiles show it
    QString at() const;                              ///< the tile with the ring of the keys; empty when none
    QAccessibleInterface* toldOf(const QString& name) const; ///< tile or check box, whichever is told
    void wheel(const QQuickItem& over, QPoint angle, Qt::KeyboardModifiers modifiers = {}) const;

    PhotoAuthorization m_status = PhotoAuthorization::authorized;
    std::optional<CatalogueWriter> m_catalogue;
};

void DuplicatesTest::add(const std::string& name, const std::string& size, const std::string& created) {
    m_catalogue->add({.uuid = name,
                      .size = size,
                      .created = created,
                      .kind = name[0] == 'B' ? "1" : "0",
                      .name = "'" + name + "'",
                      .favorite = name == "A2" ? "1" : "0"});
}

void DuplicatesTest::fill(CatalogueWriter::Maker maker) {
    m_catalogue.emplace(*m_disk, maker);
    for (const char* name : {"A1", "A2", "A3"})
        add(name, "3000000");
    for (const char* name : {"B1", "B2"})
        add(name, "2000000", "NULL");
    add("C1", "9000000");
}

void DuplicatesTest::openDuplicates(const platform::Executor& executor, PhotoAuthorization answer) {
    open(smallest, executor,
         {[this](const platform::Disk&) { return m_status; },
          [this, answer](const platform::Disk&) {
              return m_status = answer;
          }});
    QVERIFY(m_driver->click("tab_duplicates"));
    QCOMPARE(m_driver->text("screenTitle"), translated("duplicates_title"));
    QCOMPARE(m_driver->text("screenSubtitle"), translated("duplicates_subtitle"));
}

void DuplicatesTest::search() const {
    QVERIFY(m_driver->click("scanButton"));
    QTRY_VERIFY(state()->hasScanned() && !state()->isLoading());
}

void DuplicatesTest::walkIn() const {
    m_driver->item("scanButton")->forceActiveFocus(Qt::TabFocusReason);
    m_driver->key(Qt::Key_Tab);
    QVERIFY(m_driver->item("groupsList")->hasActiveFocus());
}

QQuickItem* DuplicatesTest::tile(const QString& name) const {
    for (QQuickItem* tile : tiles())
        if (tile->property("name").toString() == name)
            return tile;
    return nullptr;
}

QQuickItem* DuplicatesTest::checkBox(const QString& name) const {
    for (QQuickItem* box : m_driver->items("photoCheckBox"))
        if (tile(name) && tile(name)->isAncestorOf(box))
            return box;
    return nullptr;
}

QString DuplicatesTest::ticked() const {
    QStringList names;
    for (const QQuickItem* tile : tiles())
        if (tile->property("checked").toBool())
            names.append(tile->property("name").toString());
    names.sort();
    return names.join(' ');
}

QString DuplicatesTest::at() const {
    QStringList names;
    for (const QQuickItem* tile : tiles())
        if (tile->property("isCurrent").toBool())
            names.append(tile->property("name").toString());
    return names.join(' ');
}

QAccessibleInterface* DuplicatesTest::toldOf(const QString& name) const {
    QQuickItem* box = checkBox(name);
    return QAccessible::queryAccessibleInterface(box ? box : tile(name));
}

void DuplicatesTest::wheel(const QQuickItem& over, QPoint angle, Qt::KeyboardModifiers modifiers) const {
    const QPoint place = Driver::centre(over);
    QTRY_VERIFY(!over.property("moving").toBool()
                && !m_driver->item("groupsList")->property("moving").toBool());
    QWheelEvent event(place, window()->mapToGlobal(place), {}, angle, Qt::NoButton, modifiers,
                      Qt::NoScrollPhase, false);
    event.setTimestamp(static_cast<quint64>(QTest::lastMouseTimestamp += 1'000));
    QCoreApplication::sendEvent(window(), &event);
}

void DuplicatesTest::asksForAccessAndSearchesOnceItIsGiven_data() {
    QTest::addColumn<PhotoAuthorization>("answer");
    QTest::addColumn<QString>("then");
    QTest::newRow("given") << PhotoAuthorization::authorized << "";
    QTest::newRow("given for some") << PhotoAuthorization::limited << "";
    QTest::newRow("refused") << PhotoAuthorization::denied << "duplicates_denied_text";
    QTest::newRow("kept by somebody else") << PhotoAuthorization::restricted << "duplicates_denied_text";
    QTest::newRow("not answered") << PhotoAuthorization::notDetermined << "duplicates_permission_text";
}

void DuplicatesTest::asksForAccessAndSearchesOnceItIsGiven() {
    QFETCH(PhotoAuthorization, answer);
    QFETCH(QString, then);
    fill();
    m_status = PhotoAuthorization::notDetermined;
    HandCranked jobs;
    openDuplicates(jobs.executor(), answer);
    QCOMPARE(m_driver->text("emptyPrompt"), translated("duplicates_permission_text"));
    QCOMPARE(m_driver->text("allowButton"), translated("btn_allow_photos"));
    QVERIFY(!m_driver->isShown("scanButton") && !m_driver->isShown("summary"));
    QVERIFY(hasFocus("allowButton"));
    QVERIFY(jobs.isIdle()); // nobody was asked yet
    QVERIFY(m_driver->click("allowButton"));
    jobs.run();
    if (then.isEmpty()) {
        QCOMPARE(m_driver->text("loadingIndicator", "label"), translated("loading_duplicates"));
        QCOMPARE(m_driver->text("scanButton"), translated("btn_scanning"));
        QVERIFY(!m_driver->isEnabled("scanButton") && !m_driver->isShown("emptyPrompt"));
        jobs.run();
        QCOMPARE(m_driver->text("summary"), summary(2, "8 MB"));
        QVERIFY(hasFocus("scanButton")); // where the keyboard goes on
    } else {
        QCOMPARE(m_driver->text("emptyPrompt"), translated(then.toLatin1()));
        QCOMPARE(m_driver->isShown("allowButton"), answer == PhotoAuthorization::notDetermined);
        QVERIFY(!m_driver->isShown("scanButton") && !m_driver->isShown("loadingIndicator"));
        QVERIFY(jobs.isIdle());
    }
    QVERIFY(!m_driver->isShown("deletedLabel"));

    // Another tab and back: the answer stands.
    QVERIFY(m_driver->click("tab_history"));
    QVERIFY(m_driver->click("tab_duplicates"));
    QCOMPARE(m_driver->text("emptyPrompt"),
             translated(then.isEmpty() ? "duplicates_empty_prompt" : then.toLatin1()));
    QCOMPARE(m_driver->isShown("scanButton"), then.isEmpty());
}

void DuplicatesTest::searchesOnAClick() {
    fill();
    openDuplicates();
    QCOMPARE(m_driver->text("emptyPrompt"), translated("duplicates_empty_prompt"));
    QCOMPARE(m_driver->text("scanButton"), translated("btn_scan"));
    QVERIFY(!m_driver->isShown("deleteButton") && !m_driver->isShown("loadingIndicator"));
    search();
    QVERIFY(!m_driver->isShown("emptyPrompt") && !m_driver->isShown("loadingIndicator"));
    QCOMPARE(m_driver->text("summary"), summary(2, "8 MB"));
    QCOMPARE(shown("facts"), (QStringList{"3 × 3 MB", "2 × 2 MB"}));
    QCOMPARE(shown("gain"), (QStringList{"6 MB " + translated("duplicates_wasted_suffix"),
                                         "2 MB " + translated("duplicates_wasted_suffix")}));
    QCOMPARE(shown("date"), (QStringList{"Mar 8, 2023", ""}));
    QCOMPARE(tiles().size(), 5u);

    // The kept one is marked and has no check box; nothing is ticked by the program.
    QCOMPARE(m_driver->items("badge").size(), 2u);
    QCOMPARE(m_driver->text("badge"), translated("duplicates_kept_label"));
    for (const char* kept : {"A1", "B1"})
        QVERIFY(!checkBox(kept));
    QCOMPARE(m_driver->items("photoCheckBox").size(), 3u);
    QCOMPARE(ticked(), "");
    QCOMPARE(m_driver->text("selectionLabel"), "0 " + translated("selected_count_suffix") + " · Zero KB");
    QVERIFY(!m_driver->isEnabled("deleteButton"));
    QVERIFY(m_driver->click("deleteButton"));
    QVERIFY(!state()->showDeleteConfirm());

    // What has changed meanwhile is found by the next search, which takes the ticks away.
    m_driver->click(*tile("A2"));
    QCOMPARE(ticked(), "A2");
    m_catalogue->run("UPDATE ZASSET SET ZHIDDEN = 1 WHERE ZUUID = 'B2'");
    search();
    QTRY_COMPARE(m_driver->text("summary"), summary(1, "6 MB"));
    QCOMPARE(ticked(), "");
    QVERIFY(!m_driver->isEnabled("deleteButton"));
}

void DuplicatesTest::saysThatNothingIsThereTwice() {
    openSearched();
    QCOMPARE(m_driver->text("emptyPrompt"), translated("duplicates_none_found"));
    QVERIFY(!m_driver->isShown("groupsList") && !m_driver->isShown("deleteButton")
            && !m_driver->isShown("summary"));
    QVERIFY(m_driver->isEnabled("scanButton"));
}

void DuplicatesTest::ticksAnythingButWhatIsKept_data() {
    QTest::addColumn<QString>("how");
    for (const char* how : {"click", "Space", "Return", "toggle", "press"})
        QTest::newRow(how) << how;
}

void DuplicatesTest::ticksAnythingButWhatIsKept() {
    QFETCH(QString, how);
    fill();
    openSearched();
    const auto act = [&](const QString& name) {
        if (how == "click") {
            QTest::qWait(500); // what may be half of a double click is heard by nobody
            m_driver->click(*tile(name));
        } else if (how == "Space" || how == "Return") {
            walkIn();
            m_driver->key(Qt::Key_Home);
            for (int i = 0; i < 3; ++i)
                m_driver->key(Qt::Key_Left);
            if (name[0] == 'B')
                m_driver->key(Qt::Key_Down);
            for (int i = 1; i < name.mid(1).toInt(); ++i)
                m_driver->key(Qt::Key_Right);
            QCOMPARE(at(), name);
            m_driver->key(how == "Space" ? Qt::Key_Space : Qt::Key_Return);
        } else if (QAccessibleActionInterface* actions = toldOf(name)->actionInterface()) {
            actions->doAction(how == "toggle" ? QAccessibleActionInterface::toggleAction()
                                              : QAccessibleActionInterface::pressAction());
        }
    };
    const auto counts = [this](int count, const QString& size) {
        return m_driver->text("selectionLabel")
               == QString::number(count) + " " + translated("selected_count_suffix") + " · " + size;
    };
    for (const char* kept : {"A1", "B1"})
        act(kept);
    QCOMPARE(ticked(), "");
    QVERIFY(state()->checked().empty());
    act("A3");
    QCOMPARE(ticked(), "A3");
    act("B2");
    QCOMPARE(ticked(), "A3 B2");
    QVERIFY(counts(2, "5 MB"));
    QVERIFY(m_driver->isEnabled("deleteButton"));
    act("A1");
    act("A3");
    QCOMPARE(ticked(), "B2");
    QVERIFY(counts(1, "2 MB"));
    act("B2");
    QCOMPARE(ticked(), "");
    act("A2");
    QCOMPARE(ticked(), "A2");
    QCOMPARE(state()->checked(), std::set<std::string>{"A2/L0/001"});
}

void DuplicatesTest::deletesWhatIsConfirmedAndOnlyThat() {
    fill();
    openSearched();
    m_driver->click(*tile("A2"));
    m_driver->click(*tile("B2"));
    QVERIFY(m_driver->click("deleteButton"));
    QTRY_VERIFY(m_driver->isShown("confirm"));
    const auto* dialog = window()->findChild<QObject*>("deleteDialog");
    QCOMPARE(dialog->property("title").toString(), translated("alert_confirm_delete_title"));
    QCOMPARE(dialog->property("message").toString(), translated("alert_confirm_delete_photo_message"));
    QCOMPARE(m_driver->text("cancel"), translated("btn_cancel"));
    QCOMPARE(m_driver->text("confirm"), translated("btn_trash"));
    QVERIFY(!m_driver->isShown("deletedLabel"));
    QVERIFY(m_driver->click("confirm"));
    QTRY_COMPARE(m_driver->text("deletedLabel"), "2 " + translated("duplicates_deleted_suffix"));
    QCOMPARE(m_catalogue->value("SELECT group_concat(ZUUID) FROM ZASSET WHERE ZTRASHEDSTATE = 1"), "A2,B2");
    // It is searched anew, and what was ticked is gone.
    QTRY_COMPARE(m_driver->text("summary"), summary(1, "3 MB"));
    QCOMPARE(shown("facts"), QStringList{"2 × 3 MB"});
    QVERIFY(tile("A1") && tile("A3") && !tile("A2"));
    QCOMPARE(ticked(), "");
    QTRY_VERIFY(!m_driver->isShown("confirm"));
    QCOMPARE(at(), ""); // who works by clicks is shown no ring

    // The last of them.
    m_driver->click(*tile("A3"));
    confirm("deleteButton");
    QTRY_COMPARE(m_driver->text("emptyPrompt"), translated("duplicates_none_found"));
    QCOMPARE(m_driver->text("deletedLabel"), "1 " + translated("duplicates_deleted_suffix"));

    QVERIFY(m_driver->click("tab_history"));
    QTRY_COMPARE(shown("name"), (QStringList{translated("photo_duplicates_history_name"),
                                             translated("photo_duplicates_history_name")}));
    QCOMPARE(shown("size"), (QStringList{"3 MB", "5 MB"}));
    QVERIFY(m_driver->click("tab_duplicates")); // what was done before is no news
    QVERIFY(!m_driver->isShown("deletedLabel"));
    QCOMPARE(m_driver->text("emptyPrompt"), translated("duplicates_empty_prompt"));
}

void DuplicatesTest::takesNoForAnAnswer() {
    fill();
    openSearched();
    m_driver->click(*tile("A3"));
    const auto entries = m_disk->entries();
    for (const bool byKey : {false, true}) {
        QVERIFY(m_driver->click("deleteButton"));
        QTRY_VERIFY(m_driver->isShown("cancel"));
        if (byKey)
            m_driver->key(Qt::Key_Escape);
        else
            QVERIFY(m_driver->click("cancel"));
        QTRY_VERIFY(!m_driver->isShown("cancel"));
        QVERIFY(!state()->showDeleteConfirm());
        QTest::qWait(500); // what may be half of a double click is heard by nobody
    }
    QCOMPARE(ticked(), "A3");
    QVERIFY(m_disk->entries() == entries && m_history->entries().empty());
}

void DuplicatesTest::changesNothingWhereTheLibraryRefuses() {
    fill(CatalogueWriter::Maker::mac);
    openSearched();
    m_driver->click(*tile("A2"));
    m_driver->click(*tile("B2"));
    const auto entries = m_disk->entries();
    const std::string bytes = m_disk->read(CatalogueWriter::file);
    for (int attempt = 0; attempt < 2; ++attempt) { // it can be tried again
        confirm("deleteButton");
        QTRY_VERIFY(!state()->isDeleting());
        QCOMPARE(m_driver->text("summary"), summary(2, "8 MB"));
        QCOMPARE(ticked(), "A2 B2");
        QCOMPARE(m_driver->text("selectionLabel"), "2 " + translated("selected_count_suffix") + " · 5 MB");
        QVERIFY(m_driver->isEnabled("deleteButton") && !m_driver->isShown("deletedLabel"));
        QVERIFY(!m_driver->isShown("loadingIndicator"));
        QTest::qWait(500); // what may be half of a double click is heard by nobody
    }
    QVERIFY(m_disk->entries() == entries);
    QVERIFY(m_disk->read(CatalogueWriter::file) == bytes);
    QVERIFY(m_driver->click("tab_history"));
    QCOMPARE(m_driver->text("emptyPrompt"), translated("history_empty"));
}

void DuplicatesTest::sendsOneDeletionAtATime() {
    fill();
    HandCranked jobs;
    openDuplicates(jobs.executor());
    QVERIFY(m_driver->click("scanButton"));
    jobs.run();
    layOut();
    m_driver->click(*tile("A2"));
    confirm("deleteButton");
    QVERIFY(state()->isDeleting());
    QVERIFY(!m_driver->isEnabled("deleteButton"));
    QCOMPARE(ticked(), "A2"); // nothing has changed yet
    jobs.run();
    QVERIFY(!state()->isDeleting());
    QCOMPARE(m_driver->text("loadingIndicator", "label"), translated("loading_duplicates"));
    QCOMPARE(m_driver->text("deletedLabel"), "1 " + translated("duplicates_deleted_suffix"));
    QVERIFY(!m_driver->isShown("groupsList") && !m_driver->isShown("deleteButton"));
    // What was found before hears no keys while it can't be seen.
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Right, Qt::Key_Space, Qt::Key_Return})
        m_driver->key(key);
    QVERIFY(state()->checked().empty());
    jobs.run();
    QCOMPARE(m_driver->text("summary"), summary(2, "5 MB"));
}

void DuplicatesTest::forgetsASearchThatEndsAfterItWasLeft() {
    fill();
    HandCranked jobs;
    openDuplicates(jobs.executor());
    QVERIFY(m_driver->click("scanButton"));
    jobs.runBackground();
    QVERIFY(m_driver->isShown("loadingIndicator"));
    QVERIFY(m_driver->click("tab_history"));
    QTRY_VERIFY(!state());
    jobs.publish(); // to nobody
    QVERIFY(m_driver->click("tab_duplicates"));
    QCOMPARE(m_driver->text("emptyPrompt"), translated("duplicates_empty_prompt"));
    QVERIFY(m_driver->isEnabled("scanButton") && jobs.isIdle());
}

void DuplicatesTest::isWalkedByKeys() {
    m_catalogue.emplace(*m_disk, CatalogueWriter::Maker::lumvale);
    for (int group = 10; group < 40; ++group) // the largest first, each of two to four
        for (int item = 0; item < 2 + group % 3; ++item)
            add("A" + std::to_string(group) + "-" + std::to_string(item),
                std::to_string((50 - group) * 1'000'000 / (1 + group % 3)), std::to_string(group));
    openSearched();
    const QQuickItem* list = m_driver->item("groupsList");
    QCOMPARE(at(), "");
    walkIn();
    QCOMPARE(at(), "A10-0");
    m_driver->key(Qt::Key_Space); // it is kept
    m_driver->key(Qt::Key_Left);
    m_driver->key(Qt::Key_Up);
    QCOMPARE(at(), "A10-0");
    QCOMPARE(ticked(), "");
    for (int i = 0; i < 4; ++i) // no further than the last
        m_driver->key(Qt::Key_Right);
    QCOMPARE(at(), "A10-2");
    // Along a column, as far as groups have one.
    m_driver->key(Qt::Key_Down);
    QCOMPARE(at(), "A11-2");
    m_driver->key(Qt::Key_Down);
    QCOMPARE(at(), "A12-1");
    m_driver->key(Qt::Key_Space);
    QCOMPARE(ticked(), "A12-1");
    m_driver->key(Qt::Key_Down);
    QCOMPARE(at(), "A13-2");
    m_driver->key(Qt::Key_End);
    QTRY_COMPARE(at(), "A39-1");
    QTRY_VERIFY(Driver::place(*list).contains(Driver::place(*tile("A39-1"))));
    m_driver->key(Qt::Key_Return);
    QCOMPARE(ticked(), "A39-1");
    QCOMPARE(state()->checkedCount(), 2);
    m_driver->key(Qt::Key_PageUp);
    QTRY_VERIFY(!at().isEmpty() && at() != "A39-1");
    m_driver->key(Qt::Key_Home);
    QTRY_COMPARE(at(), "A10-2");
    m_driver->key(Qt::Key_PageDown);
    QTRY_VERIFY(!at().isEmpty() && at() != "A10-2");
    m_driver->key(Qt::Key_Home);

    // One stop for Tab; the keyboard comes back to the button from its dialog, and to the item from there.
    m_driver->key(Qt::Key_Tab);
    QVERIFY(hasFocus("deleteButton"));
    QCOMPARE(at(), "");
    m_driver->key(Qt::Key_Return);
    QTRY_VERIFY(hasFocus("cancel"));
    m_driver->key(Qt::Key_Return);
    QTRY_VERIFY(!m_driver->isShown("cancel"));
    QVERIFY(hasFocus("deleteButton"));
    m_driver->key(Qt::Key_Backtab);
    QTRY_COMPARE(at(), "A10-2");

    // The pointer hides where the keys are, and the next key shows it again, at what was clicked.
    m_driver->click(*tile("A11-1"));
    QCOMPARE(at(), "");
    m_driver->key(Qt::Key_Right);
    QCOMPARE(at(), "A11-2");

    // After a deletion that was asked for by keys the keyboard is in the list, and is seen there.
    m_driver->key(Qt::Key_Tab);
    m_driver->key(Qt::Key_Return);
    QTRY_VERIFY(hasFocus("cancel"));
    m_driver->key(Qt::Key_Tab);
    m_driver->key(Qt::Key_Return);
    QTRY_COMPARE(m_driver->text("deletedLabel"), "3 " + translated("duplicates_deleted_suffix"));
    QTRY_VERIFY(!m_driver->isShown("confirm") && !state()->isLoading());
    QTRY_VERIFY(m_driver->item("groupsList")->hasActiveFocus());
    QVERIFY(!at().isEmpty());
}

void DuplicatesTest::scrollsALargeGroup() {
    m_catalogue.emplace(*m_disk);
    for (int item = 100; item < 600; ++item)
        add("A" + std::to_string(item), "1000");
    for (const char* name : {"B1", "B2", "C1", "C2", "D1", "D2"})
        add(name, "500", std::to_string(500 + name[0]));
    openSearched();
    layOut();
    const QQuickItem* list = m_driver->item("groupsList");
    const QQuickItem* row = m_driver->item("photoRow");
    QVERIFY(tiles().size() < 16u);
    QCOMPARE(shown("facts").front(), "500 × 1 KB");

    // A wheel over the row scrolls the list; turned sideways, or with Shift, the row.
    const auto x = [&] {
        return row->property("contentX").toDouble();
    };
    const auto y = [&] {
        return list->property("contentY").toDouble();
    };
    const double top = y();
    const double left = x();
    wheel(*row, {0, -120});
    QTRY_VERIFY(y() > top);
    QCOMPARE(x(), left);
    wheel(*row, {0, 1200});
    QTRY_COMPARE(y(), top);
    wheel(*row, {-120, 0});
    QTRY_VERIFY(x() > left);
    wheel(*row, {1200, 0});
    QTRY_COMPARE(x(), left);
    wheel(*row, {0, -120}, Qt::ShiftModifier);
    QTRY_VERIFY(x() > left);
    QCOMPARE(y(), top);

    // A click on what is cut off ticks it and leaves it under the pointer.
    QTRY_VERIFY(!row->property("moving").toBool());
    m_driver->item("photoRow")->setProperty("contentX", 250);
    layOut();
    const std::vector<QQuickItem*> all = tiles();
    const auto cut = std::find_if(all.begin(), all.end(), [&](const QQuickItem* tile) {
        return Driver::place(*tile).contains(
            {Driver::place(*row).right(), Driver::place(*tile).center().y()});
    });
    QVERIFY(cut != all.end());
    QTest::mouseClick(window(), Qt::LeftButton, Qt::NoModifier,
                      Driver::place(**cut).topLeft().toPoint() + QPoint(6, 40));
    QVERIFY((*cut)->property("checked").toBool());
    QTest::qWait(50);
    QCOMPARE(x(), 250.0);

    // By keys to the end of it, which comes into sight.
    walkIn();
    m_driver->key(Qt::Key_Home);
    for (int i = 0; i < 520; ++i)
        m_driver->key(Qt::Key_Right);
    QCOMPARE(at(), "A599");
    QTRY_VERIFY(Driver::place(*row).contains(Driver::place(*tile("A599"))));
    m_driver->key(Qt::Key_Space);
    QVERIFY(tile("A599")->property("checked").toBool());
    QVERIFY(tiles().size() < 16u);
    m_driver->key(Qt::Key_Down);
    m_driver->key(Qt::Key_Up);
    QCOMPARE(at(), "A599"); // groups between keep the column
}

void DuplicatesTest::makesOnlyWhatIsInSight() {
    m_catalogue.emplace(*m_disk);
    m_catalogue->run("BEGIN");
    for (int group = 0; group < 5'000; ++group)
        for (const char* item : {"a", "b", "c"})
            add(std::to_string(10'000 + group) + item, std::to_string(9'000'000 - group * 100));
    m_catalogue->run("COMMIT");
    openSearched();
    layOut();
    QCOMPARE(m_driver->item("groupsList")->property("count").toInt(), 5'000);
    const auto made = [this] {
        return tilesBelow(*window()->contentItem());
    };
    constexpr int most = 3 * 5; // three tiles of no more rows than can be in sight
    QVERIFY(made() > 0 && made() <= most);
    walkIn();
    for (const Qt::Key key : {Qt::Key_PageDown, Qt::Key_End, Qt::Key_PageUp}) {
        m_driver->key(key);
        layOut();
        QVERIFY(tiles().size() <= most);
    }
    QVERIFY(made() <= 3 * most); // with what is kept for reuse
    // And a row that comes back shows what belongs to it.
    m_driver->key(Qt::Key_Home);
    m_driver->key(Qt::Key_Right);
    QTRY_COMPARE(at(), "10000b");
    m_driver->key(Qt::Key_Space);
    QCOMPARE(ticked(), "10000b");
    m_driver->key(Qt::Key_End);
    QTRY_COMPARE(at(), "14999b");
    layOut();
    QCOMPARE(ticked(), "");
}

void DuplicatesTest::tellsAScreenReaderWhatIsSeen() {
    fill();
    openSearched();
    const auto* list = told("groupsList");
    QCOMPARE(list->role(), QAccessible::List);
    QCOMPARE(list->text(QAccessible::Name), translated("duplicates_title"));
    auto* group = QAccessible::queryAccessibleInterface(m_driver->rows().front());
    QCOMPARE(group->role(), QAccessible::Grouping);
    QCOMPARE(group->text(QAccessible::Name),
             "Mar 8, 2023, 3 × 3 MB, 6 MB " + translated("duplicates_wasted_suffix"));
    QStringList names;
    for (int i = 0; i < group->childCount(); ++i)
        names.append(group->child(i)->text(QAccessible::Name));
    QCOMPARE(names, (QStringList{"A1, " + translated("duplicates_kept_label"), "A2", "A3"}));

    auto* kept = toldOf("A1");
    QCOMPARE(kept->role(), QAccessible::Graphic);
    QVERIFY(!kept->state().checkable);
    QVERIFY(
        !kept->actionInterface()
        || (!kept->actionInterface()->actionNames().contains(QAccessibleActionInterface::pressAction())
            && !kept->actionInterface()->actionNames().contains(QAccessibleActionInterface::toggleAction())));
    QCOMPARE(kept->childCount(), 0);

    auto* other = toldOf("A2");
    QCOMPARE(other->role(), QAccessible::CheckBox);
    QVERIFY(other->state().checkable && !other->state().checked);
    QCOMPARE(other->text(QAccessible::Description), "3 MB, Mar 8, 2023, ♥");
    QCOMPARE(toldOf("A3")->text(QAccessible::Description), "3 MB, Mar 8, 2023");
    QCOMPARE(toldOf("B2")->text(QAccessible::Description), "2 MB");
    m_driver->click(*tile("A2"));
    QVERIFY(other->state().checked);

    // One without a name is told by what it is.
    m_catalogue->run("UPDATE ZADDITIONALASSETATTRIBUTES SET ZORIGINALFILENAME = NULL");
    search();
    layOut();
    QCOMPARE(QAccessible::queryAccessibleInterface(m_driver->item("photoCheckBox"))->text(QAccessible::Name),
             "3 MB, Mar 8, 2023");
    QCOMPARE(m_driver->silentControls().join("; "), QString());
    m_catalogue->run("UPDATE ZADDITIONALASSETATTRIBUTES SET ZORIGINALFILENAME ="
                     " (SELECT ZUUID FROM ZASSET WHERE Z_PK = ZADDITIONALASSETATTRIBUTES.ZASSET)");
    search();
    layOut();
    m_driver->click(*tile("A2"));

    // What the keys are at is what is told.
    walkIn();
    m_driver->key(Qt::Key_Home);
    m_driver->key(Qt::Key_Right);
    QVERIFY(checkBox("A3")->hasActiveFocus());

    m_driver->click("deleteButton");
    QTRY_VERIFY(m_driver->isShown("confirm"));
    QVERIFY(m_driver->click("confirm"));
    QTRY_VERIFY(m_driver->isShown("deletedLabel"));
    QCOMPARE(told("deletedLabel")->role(), QAccessible::AlertMessage);
}

void DuplicatesTest::showsWhatStandsForAPicture() {
    fill();
    const std::string originals = std::string(CatalogueWriter::folder) + "/originals/A/";
    QImage picture(300, 200, QImage::Format_RGB32);
    picture.fill(Qt::red);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QVERIFY(picture.save(&buffer, "JPEG"));
    m_disk->write(originals + "A1.jpeg", bytes.toStdString());
    m_disk->write(originals + "A2.jpeg", "no picture at all");
    HandCranked jobs;
    openDuplicates(jobs.executor());
    QVERIFY(m_driver->click("scanButton"));
    jobs.run();
    layOut();
    const auto symbol = [this](const char* name) {
        for (const QQuickItem* placeholder : m_driver->items("placeholder"))
            if (tile(name)->isAncestorOf(placeholder))
                return placeholder->property("name").toString();
        return QString();
    };
    for (const char* name : {"A1", "A2", "A3", "B1"})
        QCOMPARE(symbol(name), "photo.on.rectangle.angled"); // not there yet
    while (!jobs.isIdle())
        jobs.run();
    QCOMPARE(symbol("A1"), "");
    QCOMPARE(symbol("A2"), "photo.on.rectangle.angled");
    QCOMPARE(symbol("A3"), "icloud");
    const auto colour = [this](const char* name, QPoint place) {
        return window()->grabWindow().pixelColor(Driver::place(*tile(name)).topLeft().toPoint() + place);
    };
    const QColor whole = colour("A1", {60, 60});
    QVERIFY(whole.red() > 240 && whole.green() < 20);

    // A search asks for them anew: what was in the cloud is here now, and what is ticked is dimmed.
    m_disk->write(originals + "A3.jpeg", bytes.toStdString());
    QVERIFY(m_driver->click("scanButton"));
    while (!jobs.isIdle())
        jobs.run();
    layOut();
    while (!jobs.isIdle())
        jobs.run();
    QCOMPARE(symbol("A3"), "");
    m_driver->click(*tile("A3"));
    QVERIFY(colour("A3", {60, 60}).red() < 150);
}

void DuplicatesTest::nothingIsCutOffInAnyLanguage() {
    QFETCH(AppLanguage, language);
    m_status = PhotoAuthorization::notDetermined;
    fill();
    for (int item = 0; item < 40; ++item)
        m_catalogue->add({.uuid = "L" + std::to_string(item),
                          .size = "123456789",
                          .name = "'A name as nobody would give it, and cameras even less so.jpeg'"});
    HandCranked jobs;
    openDuplicates(jobs.executor(), PhotoAuthorization::denied);
    Localizer::shared().setLanguage(language);
    checkEverythingIsSaid();
    QVERIFY(m_driver->click("allowButton"));
    jobs.run();
    QCOMPARE(m_driver->text("emptyPrompt"), translated("duplicates_denied_text"));
    checkEverythingIsSaid();

    m_status = PhotoAuthorization::authorized;
    openDuplicates(jobs.executor());
    checkEverythingIsSaid();
    QVERIFY(m_driver->click("scanButton"));
    checkEverythingIsSaid();
    // What is on the screen follows the language at once.
    Localizer::shared().setLanguage(AppLanguage::en);
    jobs.run();
    layOut();
    Localizer::shared().setLanguage(language);
    checkEverythingIsSaid();
    QCOMPARE(m_driver->text("badge"), translated("duplicates_kept_label"));
    QCOMPARE(m_driver->text("summary"), summary(3, "4.82 GB"));
    m_driver->click(*tile("A2"));
    QVERIFY(m_driver->click("deleteButton"));
    QTRY_VERIFY(m_driver->isShown("confirm"));
    checkEverythingIsSaid();
    QVERIFY(m_driver->click("confirm"));
    QTRY_VERIFY(!m_driver->isShown("confirm"));
    jobs.run();
    checkEverythingIsSaid();
    QCOMPARE(m_driver->text("deletedLabel"), "1 " + translated("duplicates_deleted_suffix"));
    jobs.run();
    checkEverythingIsSaid();
}

int main(int argc, char** argv) {
    return runTest<DuplicatesTest>(argc, argv);
}

#include "duplicates_test.moc"
