#include "app/models/duplicate_photos_view_model.h"
#include "tests/app/hand_cranked.h"
#include "tests/support/photo_catalogue.h"
#include "tests/ui/window_test.h"

#include <initializer_list>
#include <optional>
#include <string>

using platform::PhotoAuthorization;

namespace {

QString summary(int groups, const QString& wasted) {
    return QString::number(groups) + " " + translated("duplicates_groups_suffix") + " · " + wasted + " "
           + translated("duplicates_wasted_suffix");
}

} // namespace

/// The duplicates screen in the real window, driven by clicks and keys on a real library.
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

    void requestsAccessAndSearchesOnceGranted_data();
    void requestsAccessAndSearchesOnceGranted();
    void drawsGroupsAndTicksNothing();
    void ticksEveryPhotoButTheKeptOne_data();
    void ticksEveryPhotoButTheKeptOne();
    void deletesOnlyConfirmedPhotos();
    void movesFocusByArrowKeys();
    void describesPhotosToScreenReaders();

private:
    /// Makes photos A1 to A3 of 3 MB, A2 a favourite, and videos B1 and B2 of 2 MB without a date.
    void fill(CatalogueWriter::Maker maker = CatalogueWriter::Maker::lumvale);
    void add(const std::string& name, const std::string& size, const std::string& created = "700000000");
    /// Opens the window and the tab; a request for access gets this answer.
    void openDuplicates(const platform::Executor& executor = qtExecutor(),
                        PhotoAuthorization answer = PhotoAuthorization::authorized);
    void search() const; ///< clicks the button and waits for the result
    void openSearched() {
        openDuplicates();
        search();
        layOut();
    }
    void keys(std::initializer_list<Qt::Key> keys) const;
    void focusFirstPhoto() const;

    DuplicatePhotosViewModel* state() const { return model<DuplicatePhotosViewModel>(); }
    QQuickItem* tile(const QString& name) const;
    QQuickItem* in(const QString& name, const char* part) const; ///< a part of that tile, or null
    QString ticked() const;                                      ///< names of the ticked tiles
    void checkTicked(const QString& names, int count, const QString& size) const;
    QAccessibleInterface* accessible(const QString& name) const; ///< of the tile or its check box

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

void DuplicatesTest::focusFirstPhoto() const {
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

void DuplicatesTest::checkTicked(const QString& names, int count, const QString& size) const {
    QCOMPARE(ticked(), names);
    QCOMPARE(m_driver->text("selectionLabel"),
             QString::number(count) + " " + translated("selected_count_suffix") + " · " + size);
    QCOMPARE(m_driver->isEnabled("deleteButton"), count > 0);
}

QAccessibleInterface* DuplicatesTest::accessible(const QString& name) const {
    QQuickItem* box = in(name, "photoCheckBox");
    return QAccessible::queryAccessibleInterface(box ? box : tile(name));
}

void DuplicatesTest::requestsAccessAndSearchesOnceGranted_data() {
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

void DuplicatesTest::requestsAccessAndSearchesOnceGranted() {
    QFETCH(PhotoAuthorization, answer);
    QFETCH(QByteArray, then);
    const bool isGiven = then == "duplicates_empty_prompt";
    fill();
    m_status = PhotoAuthorization::notDetermined;
    HandCranked jobs;
    openDuplicates(jobs.executor(), answer);
    QCOMPARE(m_driver->text("emptyPrompt"), translated("duplicates_permission_text"));
    QVERIFY(hasFocus("allowButton") && !m_driver->isShown("scanButton"));
    QVERIFY(jobs.isIdle()); // not requested yet
    QVERIFY(m_driver->click("allowButton"));
    jobs.run();
    QCOMPARE(m_driver->isShown("loadingIndicator"), isGiven);
    QCOMPARE(m_driver->text("scanButton"), isGiven ? translated("btn_scanning") : QString());
    QCOMPARE(m_driver->text("emptyPrompt"), isGiven ? QString() : translated(then));
    jobs.run();
    QCOMPARE(m_driver->text("summary"), isGiven ? summary(2, "8 MB") : QString());
    QVERIFY(!isGiven || hasFocus("scanButton"));
}

void DuplicatesTest::drawsGroupsAndTicksNothing() {
    fill();
    openDuplicates();
    QCOMPARE(m_driver->text("emptyPrompt"), translated("duplicates_empty_prompt"));
    QVERIFY(!m_driver->isShown("deleteButton") && !m_driver->isShown("loadingIndicator"));
    search();
    QVERIFY(!m_driver->isShown("emptyPrompt") && !m_driver->isShown("loadingIndicator"));
    QCOMPARE(m_driver->text("summary"), summary(2, "8 MB"));
    const QString wasted = " MB " + translated("duplicates_wasted_suffix");
    const QString kept = translated("duplicates_kept_label");
    QCOMPARE(Driver::texts(*m_driver->rows().at(0)),
             (QStringList{"Mar 8, 2023", "3 × 3 MB", "6" + wasted, kept, "A1", "A2", "A3"}));
    QCOMPARE(Driver::texts(*m_driver->rows().at(1)),
             (QStringList{"2 × 2 MB", "2" + wasted, kept, "B1", "B2"}));

    checkTicked("", 0, "Zero KB");
    QVERIFY(m_driver->click("deleteButton"));
    QVERIFY(!state()->showDeleteConfirm());

    // The next search finds a change and clears the ticks.
    m_driver->click(*tile("A2"));
    checkTicked("A2", 1, "3 MB");
    m_catalogue->run("UPDATE ZASSET SET ZHIDDEN = 1 WHERE ZUUID = 'B2'");
    search();
    QTRY_COMPARE(m_driver->text("summary"), summary(1, "6 MB"));
    checkTicked("", 0, "Zero KB");
}

void DuplicatesTest::ticksEveryPhotoButTheKeptOne_data() {
    QTest::addColumn<QString>("how");
    for (const char* how : {"click", "Space", "toggle"})
        QTest::newRow(how) << how;
}

void DuplicatesTest::ticksEveryPhotoButTheKeptOne() {
    QFETCH(QString, how);
    fill();
    openSearched();
    const auto act = [&](const QString& name) {
        if (how == "click") {
            QTest::qWait(500); // longer than a double click, whose second half is ignored
            m_driver->click(*tile(name));
        } else if (how == "Space") {
            focusFirstPhoto();
            if (name[0] == 'B')
                m_driver->key(Qt::Key_Down);
            for (int i = 1; i < name.mid(1).toInt(); ++i)
                m_driver->key(Qt::Key_Right);
            QCOMPARE(current(), name);
            m_driver->key(Qt::Key_Space);
        } else if (QAccessibleActionInterface* actions = accessible(name)->actionInterface()) {
            actions->doAction(QAccessibleActionInterface::toggleAction());
        }
    };
    for (const char* kept : {"A1", "B1"})
        act(kept);
    checkTicked("", 0, "Zero KB");
    QVERIFY(state()->checked().empty());
    act("A3");
    act("B2");
    checkTicked("A3 B2", 2, "5 MB");
    act("A3");
    checkTicked("B2", 1, "2 MB");
}

void DuplicatesTest::deletesOnlyConfirmedPhotos() {
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
    QCOMPARE(m_driver->text("dialogMessage"), translated("alert_confirm_delete_photo_message"));
    QVERIFY(m_driver->click("confirm"));
    QTRY_VERIFY(!m_driver->isShown("confirm"));
    // The library has not answered: nothing has changed, and no second deletion is possible.
    QCOMPARE(ticked(), "A2 B2");
    QVERIFY(!m_driver->isEnabled("deleteButton") && !m_driver->isShown("deletedLabel"));

    jobs.run();
    const auto* trashed = "SELECT group_concat(ZUUID) FROM ZASSET WHERE ZTRASHEDSTATE = 1";
    QCOMPARE(m_catalogue->value(trashed), "A2,B2");
    QCOMPARE(m_driver->text("deletedLabel"), "2 " + translated("duplicates_deleted_suffix"));
    QCOMPARE(told("deletedLabel")->role(), QAccessible::AlertMessage);
    QCOMPARE(m_driver->text("loadingIndicator", "label"), translated("loading_duplicates"));
    QVERIFY(!m_driver->isShown("groupsList") && !m_driver->isShown("deleteButton"));
    jobs.run();
    QCOMPARE(m_driver->text("summary"), summary(1, "3 MB"));
    checkTicked("", 0, "Zero KB");

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
    QTRY_COMPARE(m_driver->rows().size(), 2u);
    QVERIFY(Driver::texts(*m_driver->rows().at(0)).contains("3 MB")
            && Driver::texts(*m_driver->rows().at(1)).contains("5 MB"));
}

void DuplicatesTest::movesFocusByArrowKeys() {
    m_catalogue.emplace(*m_disk);
    for (int group = 0; group < 4; ++group) // groups of three, four, two and three
        for (int item = 0; item < 2 + (group + 1) % 3; ++item)
            add("A" + std::to_string(group) + std::to_string(item), std::to_string(90'000 >> (2 * group)),
                std::to_string(group));
    openSearched();
    focusFirstPhoto();
    keys({Qt::Key_Space, Qt::Key_Left, Qt::Key_Up}); // the first photo is the kept one
    QCOMPARE(current(), "A00");
    QCOMPARE(ticked(), "");
    keys({Qt::Key_Right, Qt::Key_Right, Qt::Key_Right, Qt::Key_Right}); // stops at the last
    QCOMPARE(current(), "A02");
    // Up and Down keep the column where the group has one.
    for (const char* next : {"A12", "A21", "A32"}) {
        m_driver->key(Qt::Key_Down);
        QCOMPARE(current(), next);
    }
    keys({Qt::Key_Up, Qt::Key_Space});
    QCOMPARE(ticked(), "A21");
}

void DuplicatesTest::describesPhotosToScreenReaders() {
    fill();
    openSearched();
    const auto* group = QAccessible::queryAccessibleInterface(m_driver->rows().front());
    QCOMPARE(group->text(QAccessible::Name),
             "Mar 8, 2023, 3 × 3 MB, 6 MB " + translated("duplicates_wasted_suffix"));
    QStringList names;
    for (int i = 0; i < group->childCount(); ++i)
        names.append(group->child(i)->text(QAccessible::Name));
    QCOMPARE(names, (QStringList{"A1, " + translated("duplicates_kept_label"), "A2", "A3"}));

    auto* kept = accessible("A1");
    QCOMPARE(kept->role(), QAccessible::Graphic);
    QVERIFY(!kept->state().checkable);
    const auto* other = accessible("A2");
    QCOMPARE(other->role(), QAccessible::CheckBox);
    QVERIFY(other->state().checkable && !other->state().checked);
    m_driver->click(*tile("A2"));
    QVERIFY(other->state().checked);
    QCOMPARE(other->text(QAccessible::Description), "3 MB, Mar 8, 2023, ♥");
    QCOMPARE(accessible("A3")->text(QAccessible::Description), "3 MB, Mar 8, 2023");
    QCOMPARE(accessible("B2")->text(QAccessible::Description), "2 MB");
}

int main(int argc, char** argv) {
    return runTest<DuplicatesTest>(argc, argv);
}

#include "duplicates_test.moc"
