#include "app/models/duplicate_photos_view_model.h"
#include "tests/app/hand_cranked.h"
#include "tests/support/photo_catalogue.h"
#include "tests/ui/window_test.h"

#include <QBuffer>
#include <QImage>
#include <QWheelEvent>

#include <initializer_list>
#include <optional>
#include <set>
#include <string>
#include <utility>

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

/// The duplicates screen as its user meets it: the real window, clicks and keys, a real library. What all
/// screens promise alike is asked of them together.
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
    void ticksAnythingButWhatIsKept_data();
    void ticksAnythingButWhatIsKept();
    void deletesWhatIsConfirmedAndOnlyThat();
    void changesNothingWhereTheLibraryRefuses();
    void isWalkedByKeysInBothDirections();
    void scrollsALargeGroup();
    void makesOnlyWhatIsInSight();
    void tellsAScreenReaderWhatIsSeen();
    void showsWhatStandsForAPicture();
    void goesOnByKeysWhereTheyWereTaken();

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
        layOut();
    }
    void keys(std::initializer_list<Qt::Key> keys) const;
    void walkIn() const; ///< to the first item of the list, by keys

    DuplicatePhotosViewModel* state() const { return model<DuplicatePhotosViewModel>(); }
    QQuickItem* tile(const QString& name) const;
    QQuickItem* in(const QString& name, const char* part) const; ///< of that tile; null where it has none
    QString ticked() const;                                      ///< the names, as the tiles show it
    void hasTicked(const QString& names, int count, const QString& size) const; ///< checks it
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
}

void DuplicatesTest::search() const {
    QVERIFY(m_driver->click("scanButton"));
    QTRY_VERIFY(state()->hasScanned() && !state()->isLoading());
}

void DuplicatesTest::keys(std::initializer_list<Qt::Key> keys) const {
    for (const Qt::Key key : keys)
        m_driver->key(key);
}

void DuplicatesTest::walkIn() const {
    m_driver->item("scanButton")->forceActiveFocus(Qt::TabFocusReason);
    keys({Qt::Key_Tab, Qt::Key_Home, Qt::Key_Left, Qt::Key_Left});
    QVERIFY(hasFocus("groupsList"));
}

QQuickItem* DuplicatesTest::tile(const QString& name) const {
    for (QQuickItem* tile : m_driver->items("photoTile"))
        if (tile->property("name").toString() == name)
            return tile;
    return nullptr;
}

QQuickItem* DuplicatesTest::in(const QString& name, const char* part) const {
    const QQuickItem* around = tile(name);
    for (QQuickItem* found : m_driver->items(part))
        if (around && around->isAncestorOf(found))
            return found;
    return nullptr;
}

QString DuplicatesTest::ticked() const {
    QStringList names;
    for (const QQuickItem* tile : m_driver->items("photoTile"))
        if (tile->property("checked").toBool())
            names.append(tile->property("name").toString());
    names.sort();
    return names.join(' ');
}

void DuplicatesTest::hasTicked(const QString& names, int count, const QString& size) const {
    QCOMPARE(ticked(), names);
    QCOMPARE(m_driver->text("selectionLabel"),
             QString::number(count) + " " + translated("selected_count_suffix") + " · " + size);
    QCOMPARE(m_driver->isEnabled("deleteButton"), count > 0);
}

QAccessibleInterface* DuplicatesTest::toldOf(const QString& name) const {
    QQuickItem* box = in(name, "photoCheckBox");
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
    QTest::addColumn<QByteArray>("then");
    const auto add = [](const char* name, PhotoAuthorization answer, const char* then) {
        QTest::newRow(name) << answer << QByteArray(then);
    };
    add("given", PhotoAuthorization::authorized, "duplicates_empty_prompt");
    add("given for some", PhotoAuthorization::limited, "duplicates_empty_prompt");
    add("refused", PhotoAuthorization::denied, "duplicates_denied_text");
    add("not answered", PhotoAuthorization::notDetermined, "duplicates_permission_text");
}

void DuplicatesTest::asksForAccessAndSearchesOnceItIsGiven() {
    QFETCH(PhotoAuthorization, answer);
    QFETCH(QByteArray, then);
    const bool isGiven = then == "duplicates_empty_prompt";
    fill();
    m_status = PhotoAuthorization::notDetermined;
    HandCranked jobs;
    openDuplicates(jobs.executor(), answer);
    QCOMPARE(m_driver->text("emptyPrompt"), translated("duplicates_permission_text"));
    QVERIFY(hasFocus("allowButton") && !m_driver->isShown("scanButton"));
    QVERIFY(jobs.isIdle()); // nobody was asked yet
    QVERIFY(m_driver->click("allowButton"));
    jobs.run();
    QCOMPARE(m_driver->isShown("loadingIndicator"), isGiven);
    QCOMPARE(m_driver->text("scanButton"), isGiven ? translated("btn_scanning") : QString());
    QCOMPARE(m_driver->text("emptyPrompt"), isGiven ? QString() : translated(then));
    jobs.run();
    QCOMPARE(m_driver->text("summary"), isGiven ? summary(2, "8 MB") : QString());
    QVERIFY(!isGiven || hasFocus("scanButton")); // where the keyboard goes on

    // Another tab and back: the answer stands.
    QVERIFY(m_driver->click("tab_history"));
    QTRY_VERIFY(!state()); // what is left is discarded
    QVERIFY(m_driver->click("tab_duplicates"));
    QCOMPARE(m_driver->text("emptyPrompt"), translated(then));
    QCOMPARE(m_driver->isShown("scanButton"), isGiven);
    QCOMPARE(m_driver->isShown("allowButton"), answer == PhotoAuthorization::notDetermined);
}

void DuplicatesTest::searchesOnAClick() {
    fill();
    openDuplicates();
    QCOMPARE(m_driver->text("emptyPrompt"), translated("duplicates_empty_prompt"));
    QVERIFY(!m_driver->isShown("deleteButton") && !m_driver->isShown("loadingIndicator"));
    search();
    QVERIFY(!m_driver->isShown("emptyPrompt") && !m_driver->isShown("loadingIndicator"));
    QCOMPARE(m_driver->text("summary"), summary(2, "8 MB"));
    QCOMPARE(shown("facts"), (QStringList{"3 × 3 MB", "2 × 2 MB"}));
    QCOMPARE(shown("gain"), (QStringList{"6 MB " + translated("duplicates_wasted_suffix"),
                                         "2 MB " + translated("duplicates_wasted_suffix")}));
    QCOMPARE(shown("date"), (QStringList{"Mar 8, 2023", ""}));

    // The kept one is marked and has no check box; nothing is ticked by the program.
    for (const char* name : {"A1", "A2", "A3", "B1", "B2"}) {
        QCOMPARE(in(name, "badge") != nullptr, name[1] == '1');
        QCOMPARE(in(name, "photoCheckBox") == nullptr, name[1] == '1');
    }
    hasTicked("", 0, "Zero KB");
    QVERIFY(m_driver->click("deleteButton"));
    QVERIFY(!state()->showDeleteConfirm());

    // What has changed meanwhile is found by the next search, which takes the ticks away.
    m_driver->click(*tile("A2"));
    hasTicked("A2", 1, "3 MB");
    m_catalogue->run("UPDATE ZASSET SET ZHIDDEN = 1 WHERE ZUUID = 'B2'");
    search();
    QTRY_COMPARE(m_driver->text("summary"), summary(1, "6 MB"));
    hasTicked("", 0, "Zero KB");
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
            if (name[0] == 'B')
                m_driver->key(Qt::Key_Down);
            for (int i = 1; i < name.mid(1).toInt(); ++i)
                m_driver->key(Qt::Key_Right);
            QCOMPARE(current(), name);
            m_driver->key(how == "Space" ? Qt::Key_Space : Qt::Key_Return);
        } else if (QAccessibleActionInterface* actions = toldOf(name)->actionInterface()) {
            actions->doAction(how == "toggle" ? QAccessibleActionInterface::toggleAction()
                                              : QAccessibleActionInterface::pressAction());
        }
    };
    for (const char* kept : {"A1", "B1"})
        act(kept);
    hasTicked("", 0, "Zero KB");
    QVERIFY(state()->checked().empty());
    act("A3");
    act("B2");
    hasTicked("A3 B2", 2, "5 MB");
    act("A1");
    act("A3");
    hasTicked("B2", 1, "2 MB");
    act("B2");
    act("A2");
    hasTicked("A2", 1, "3 MB");
    QCOMPARE(state()->checked(), std::set<std::string>{"A2/L0/001"});
}

void DuplicatesTest::deletesWhatIsConfirmedAndOnlyThat() {
    fill();
    HandCranked jobs;
    openDuplicates(jobs.executor());
    QVERIFY(m_driver->click("scanButton"));
    jobs.run();
    layOut();
    m_driver->click(*tile("A2"));
    m_driver->click(*tile("B2"));
    QVERIFY(m_driver->click("deleteButton"));
    QTRY_VERIFY(m_driver->isShown("confirm"));
    QCOMPARE(m_driver->text("dialogTitle"), translated("alert_confirm_delete_title"));
    QCOMPARE(m_driver->text("dialogMessage"), translated("alert_confirm_delete_photo_message"));
    QCOMPARE(m_driver->text("cancel"), translated("btn_cancel"));
    QCOMPARE(m_driver->text("confirm"), translated("btn_trash"));
    QVERIFY(m_driver->click("confirm"));
    QTRY_VERIFY(!m_driver->isShown("confirm"));
    // Nothing has changed yet, and nothing more can be asked for.
    QCOMPARE(ticked(), "A2 B2");
    QVERIFY(!m_driver->isEnabled("deleteButton") && !m_driver->isShown("deletedLabel"));

    jobs.run();
    const auto* trashed = "SELECT group_concat(ZUUID) FROM ZASSET WHERE ZTRASHEDSTATE = 1";
    QCOMPARE(m_catalogue->value(trashed), "A2,B2");
    QCOMPARE(m_driver->text("deletedLabel"), "2 " + translated("duplicates_deleted_suffix"));
    QCOMPARE(told("deletedLabel")->role(), QAccessible::AlertMessage);
    QCOMPARE(m_driver->text("loadingIndicator", "label"), translated("loading_duplicates"));
    QVERIFY(!m_driver->isShown("groupsList") && !m_driver->isShown("deleteButton"));
    // What was found before hears no keys while it can't be seen.
    keys({Qt::Key_Down, Qt::Key_Right, Qt::Key_Space, Qt::Key_Return});
    QVERIFY(state()->checked().empty());
    jobs.run();
    QCOMPARE(m_driver->text("summary"), summary(1, "3 MB"));
    hasTicked("", 0, "Zero KB");

    layOut();
    m_driver->click(*tile("A3")); // the last
    confirm("deleteButton");
    while (!jobs.isIdle())
        jobs.run();
    QCOMPARE(m_driver->text("emptyPrompt"), translated("duplicates_none_found"));
    QCOMPARE(m_driver->text("deletedLabel"), "1 " + translated("duplicates_deleted_suffix"));
    QVERIFY(!m_driver->isShown("groupsList") && !m_driver->isShown("deleteButton")
            && !m_driver->isShown("summary") && m_driver->isEnabled("scanButton"));

    QVERIFY(m_driver->click("tab_history"));
    QTRY_COMPARE(shown("name"), QStringList(2, translated("photo_duplicates_history_name")));
    QCOMPARE(shown("size"), (QStringList{"3 MB", "5 MB"}));
    QVERIFY(m_driver->click("tab_duplicates")); // what was done before is no news
    QVERIFY(!m_driver->isShown("deletedLabel"));
    QCOMPARE(m_driver->text("emptyPrompt"), translated("duplicates_empty_prompt"));
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
        QTRY_VERIFY(!state()->isDeleting() && !state()->showDeleteConfirm());
        QCOMPARE(m_driver->text("summary"), summary(2, "8 MB"));
        hasTicked("A2 B2", 2, "5 MB");
        QVERIFY(!m_driver->isShown("deletedLabel") && !m_driver->isShown("loadingIndicator"));
        QTest::qWait(500); // what may be half of a double click is heard by nobody
    }
    QVERIFY(m_disk->entries() == entries);
    QVERIFY(m_disk->read(CatalogueWriter::file) == bytes);
    QVERIFY(m_history->entries().empty());
}

void DuplicatesTest::isWalkedByKeysInBothDirections() {
    m_catalogue.emplace(*m_disk);
    for (int group = 0; group < 4; ++group) // the largest first, of three, four, two and three
        for (int item = 0; item < 2 + (group + 1) % 3; ++item)
            add("A" + std::to_string(group) + std::to_string(item), std::to_string(90'000 >> (2 * group)),
                std::to_string(group));
    openSearched();
    walkIn();
    keys({Qt::Key_Space, Qt::Key_Left, Qt::Key_Up}); // the first is kept
    QCOMPARE(current(), "A00");
    QCOMPARE(ticked(), "");
    keys({Qt::Key_Right, Qt::Key_Right, Qt::Key_Right, Qt::Key_Right}); // no further than the last
    QCOMPARE(current(), "A02");
    // Along a column, as far as groups have one.
    for (const char* next : {"A12", "A21", "A32"}) {
        m_driver->key(Qt::Key_Down);
        QCOMPARE(current(), next);
    }
    keys({Qt::Key_Up, Qt::Key_Space});
    QCOMPARE(ticked(), "A21");

    // The pointer hides where the keys are, and the next key shows it again, at what was clicked.
    m_driver->click(*tile("A11"));
    QCOMPARE(current(), "");
    m_driver->key(Qt::Key_Right);
    QCOMPARE(current(), "A12");
}

void DuplicatesTest::scrollsALargeGroup() {
    m_catalogue.emplace(*m_disk);
    for (int item = 100; item < 600; ++item)
        add("A" + std::to_string(item), "1000");
    for (const char* name : {"B1", "B2", "C1", "C2", "D1", "D2"})
        add(name, "500", std::to_string(500 + name[0]));
    openSearched();
    const QQuickItem* list = m_driver->item("groupsList");
    QQuickItem* row = m_driver->item("photoRow");
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
    const struct {
        QPoint angle;
        Qt::KeyboardModifiers modifiers;
        bool isDown;
        bool isAside;
    } turns[]{{{0, -120}, {}, true, false},
              {{0, 1200}, {}, false, false},
              {{-120, 0}, {}, false, true},
              {{1200, 0}, {}, false, false},
              {{0, -120}, Qt::ShiftModifier, false, true}};
    for (const auto& [angle, modifiers, isDown, isAside] : turns) {
        wheel(*row, angle, modifiers);
        QTRY_COMPARE(std::pair(y() > top, x() > left), std::pair(isDown, isAside));
    }

    // A click on what is cut off ticks it and leaves it under the pointer.
    QTRY_VERIFY(!row->property("moving").toBool());
    row->setProperty("contentX", 250);
    layOut();
    QQuickItem* cut = nullptr;
    for (QQuickItem* tile : m_driver->items("photoTile"))
        if (Driver::place(*tile).contains(Driver::place(*row).right(), Driver::centre(*tile).y()))
            cut = tile;
    QVERIFY(cut);
    QTest::mouseClick(window(), Qt::LeftButton, Qt::NoModifier,
                      Driver::place(*cut).topLeft().toPoint() + QPoint(6, 40));
    QVERIFY(cut->property("checked").toBool());
    QTest::qWait(50);
    QCOMPARE(x(), 250.0);

    // By keys to the end of it, which comes into sight.
    walkIn();
    for (int i = 0; i < 520; ++i)
        m_driver->key(Qt::Key_Right);
    QCOMPARE(current(), "A599");
    QTRY_VERIFY(Driver::place(*row).contains(Driver::place(*tile("A599"))));
    QVERIFY(m_driver->items("photoTile").size() < 16u);
    keys({Qt::Key_Down, Qt::Key_Up});
    QCOMPARE(current(), "A599"); // groups between keep the column
}

void DuplicatesTest::makesOnlyWhatIsInSight() {
    m_catalogue.emplace(*m_disk);
    m_catalogue->run("BEGIN");
    for (int group = 0; group < 5'000; ++group)
        for (const char* item : {"a", "b", "c"})
            add(std::to_string(10'000 + group) + item, std::to_string(9'000'000 - group * 100));
    m_catalogue->run("COMMIT");
    openSearched();
    QCOMPARE(m_driver->item("groupsList")->property("count").toInt(), 5'000);
    constexpr int most = 3 * 5; // three tiles of no more rows than can be in sight
    const int made = tilesBelow(*window()->contentItem());
    QVERIFY(made > 0 && made <= most);
    walkIn();
    for (const Qt::Key key : {Qt::Key_PageDown, Qt::Key_End, Qt::Key_PageUp}) {
        m_driver->key(key);
        layOut();
        QVERIFY(m_driver->items("photoTile").size() <= most);
    }
    QVERIFY(tilesBelow(*window()->contentItem()) <= 3 * most); // with what is kept for reuse
    // And a row that comes back shows what belongs to it.
    keys({Qt::Key_Home, Qt::Key_Right});
    QTRY_COMPARE(current(), "10000b");
    m_driver->key(Qt::Key_Space);
    QCOMPARE(ticked(), "10000b");
    m_driver->key(Qt::Key_End);
    QTRY_COMPARE(current(), "14999b");
    layOut();
    QCOMPARE(ticked(), "");
}

void DuplicatesTest::tellsAScreenReaderWhatIsSeen() {
    fill();
    openSearched();
    const auto* group = QAccessible::queryAccessibleInterface(m_driver->rows().front());
    QCOMPARE(group->text(QAccessible::Name),
             "Mar 8, 2023, 3 × 3 MB, 6 MB " + translated("duplicates_wasted_suffix"));
    QStringList names;
    for (int i = 0; i < group->childCount(); ++i)
        names.append(group->child(i)->text(QAccessible::Name));
    QCOMPARE(names, (QStringList{"A1, " + translated("duplicates_kept_label"), "A2", "A3"}));

    auto* kept = toldOf("A1");
    QCOMPARE(kept->role(), QAccessible::Graphic);
    QVERIFY(!kept->state().checkable);
    QCOMPARE(kept->childCount(), 0);
    if (const auto* actions = kept->actionInterface())
        for (const QString& action :
             {QAccessibleActionInterface::pressAction(), QAccessibleActionInterface::toggleAction()})
            QVERIFY(!actions->actionNames().contains(action));

    const auto* other = toldOf("A2");
    QCOMPARE(other->role(), QAccessible::CheckBox);
    QVERIFY(other->state().checkable && !other->state().checked);
    m_driver->click(*tile("A2"));
    QVERIFY(other->state().checked);
    QCOMPARE(other->text(QAccessible::Description), "3 MB, Mar 8, 2023, ♥");
    QCOMPARE(toldOf("A3")->text(QAccessible::Description), "3 MB, Mar 8, 2023");
    QCOMPARE(toldOf("B2")->text(QAccessible::Description), "2 MB");

    // What the keys are at is what is told.
    walkIn();
    keys({Qt::Key_Right, Qt::Key_Right});
    QVERIFY(in("A3", "photoCheckBox")->hasActiveFocus());

    // One without a name is told by what it is.
    m_catalogue->run("UPDATE ZADDITIONALASSETATTRIBUTES SET ZORIGINALFILENAME = NULL");
    search();
    layOut();
    QCOMPARE(told("photoCheckBox")->text(QAccessible::Name), "3 MB, Mar 8, 2023");
}

void DuplicatesTest::showsWhatStandsForAPicture() {
    fill();
    const std::string originals = std::string(CatalogueWriter::folder) + "/originals/A/";
    QImage picture(300, 200, QImage::Format_RGB32);
    picture.fill(Qt::red);
    QBuffer jpeg;
    QVERIFY(jpeg.open(QIODevice::WriteOnly) && picture.save(&jpeg, "JPEG"));
    m_disk->write(originals + "A1.jpeg", jpeg.data().toStdString());
    m_disk->write(originals + "A2.jpeg", "no picture at all");
    HandCranked jobs;
    openDuplicates(jobs.executor());
    const auto searchAndLoad = [&] {
        QVERIFY(m_driver->click("scanButton"));
        jobs.run();
        layOut();
        QCOMPARE(m_driver->items("placeholder").size(), 5u); // none is there yet
        while (!jobs.isIdle())
            jobs.run();
    };
    const auto symbol = [this](const char* name) {
        const QQuickItem* placeholder = in(name, "placeholder");
        return placeholder ? placeholder->property("name").toString() : QString();
    };
    const auto red = [this](const char* name) {
        return window()->grabWindow().pixelColor(Driver::centre(*in(name, "thumbnail"))).red();
    };
    searchAndLoad();
    QCOMPARE(symbol("A1"), "");
    QCOMPARE(symbol("A2"), "photo.on.rectangle.angled");
    QCOMPARE(symbol("A3"), "icloud");
    QVERIFY(red("A1") > 240);

    // A search asks for them anew: what was in the cloud is here now, and what is ticked is dimmed.
    m_disk->write(originals + "A3.jpeg", jpeg.data().toStdString());
    searchAndLoad();
    QCOMPARE(symbol("A3"), "");
    QVERIFY(red("A3") > 240);
    m_driver->click(*tile("A3"));
    QVERIFY(red("A3") < 150);
}

/// What had the keyboard goes: the button that asked for access, and the last group.
void DuplicatesTest::goesOnByKeysWhereTheyWereTaken() {
    m_catalogue.emplace(*m_disk, CatalogueWriter::Maker::lumvale);
    for (const char* name : {"A1", "A2"})
        add(name, "1000");
    m_status = PhotoAuthorization::notDetermined;
    openDuplicates();
    const auto isOnTheButton = [this] {
        return hasFocus("scanButton") && m_driver->item("scanButton")->property("visualFocus").toBool();
    };
    keys({Qt::Key_Tab, Qt::Key_Backtab});
    QVERIFY(hasFocus("allowButton"));
    keys({Qt::Key_Space});
    QTRY_VERIFY(m_driver->isShown("groupsList"));
    QVERIFY(isOnTheButton());

    keys({Qt::Key_Tab, Qt::Key_Right, Qt::Key_Space, Qt::Key_Tab, Qt::Key_Space});
    QTRY_VERIFY(hasFocus("cancel"));
    keys({Qt::Key_Tab, Qt::Key_Return});
    QTRY_COMPARE(m_driver->text("emptyPrompt"), translated("duplicates_none_found"));
    QTRY_VERIFY(!m_driver->isShown("confirm"));
    QVERIFY(isOnTheButton());
}

int main(int argc, char** argv) {
    return runTest<DuplicatesTest>(argc, argv);
}

#include "duplicates_test.moc"
