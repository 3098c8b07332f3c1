#!/usr/bin/python3
"""screen_reader_test.py LUMVALE SAMPLE_DISK TEXTS: goes through the program on a sample disk as a screen reader does,
by AT-SPI. Behind an open dialog or sheet no control may be found, shown or pressed. Needs a D-Bus session of its own;
TEXTS is the folder of the translations."""

import json
import os
import pathlib
import subprocess
import sys
import tempfile
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

lumvale, sample_disk, texts_folder = sys.argv[1:]
texts = {}
for folder in ("", "additional"):
    texts.update(json.loads(pathlib.Path(texts_folder, folder, "en.json").read_text()))


def wait_for(what, find):
    """Returns the first true result of `find`; fails if there is none within a minute."""
    end = time.monotonic() + 60
    while time.monotonic() < end:
        try:
            found = find()
            if found:
                return found
        except GLib.Error:  # an item disappeared meanwhile
            pass
        time.sleep(0.1)
    sys.exit(f"did not find: {what}; the tree is\n" + "\n".join(map(described, tree())))


def program():
    desktop = Atspi.get_desktop(0)
    for i in range(desktop.get_child_count()):
        found = desktop.get_child_at_index(i)
        if found and found.get_process_id() == process.pid:
            return found
    return None


def tree(root=None):
    """Returns the items below `root`, which by default is the program."""
    root = root or program()
    if not root:
        return []
    root.clear_cache()
    items = []
    for i in range(root.get_child_count()):
        child = root.get_child_at_index(i)
        if child:
            items += [child] + tree(child)
    return items


def has_state(item, state):
    return item.get_state_set().contains(state)


def described(item):
    return f"{item.get_role_name()} '{item.get_name()}' '{item.get_description()}'"


def find(role, name):
    """Returns the visible item of this role and name; waits until there is one."""

    def matches(item):
        return (item.get_role_name(), item.get_name()) == (role, name) and has_state(item, Atspi.StateType.SHOWING)

    return wait_for(f"{role} {name}", lambda: next(filter(matches, tree()), None))


def actions(item):
    return [item.get_action_name(i) for i in range(item.get_n_actions())]


def press(item):
    item.do_action(actions(item).index("Press"))


def open_modal(name):
    """Waits for the modal dialog of this name, which must be all that there is in the window."""
    dialog = find("dialog", name)
    check(has_state(dialog, Atspi.StateType.MODAL), f"{name} is not modal")
    window = program().get_child_at_index(0)
    children = [window.get_child_at_index(i) for i in range(window.get_child_count())]
    check(children == [dialog], "there is more than the dialog: " + "; ".join(map(described, children)))


def check_out_of_reach(items):
    """Checks that none of these items, which were found before a dialog opened, is shown or can be pressed."""
    for item in items:
        item.clear_cache()
        try:
            check(not has_state(item, Atspi.StateType.SHOWING), "an item behind the dialog is shown")
            for i in range(item.get_n_actions()):
                check(not item.do_action(i), "an item behind the dialog could be pressed")
        except GLib.Error:  # it no longer exists
            pass


def pass_modal(opener, name, closer, act=lambda: None):
    """Presses a button, checks that only the dialog of this name can be reached, acts in it and closes it."""
    behind = [item for item in tree() if item.get_n_actions() > 0]
    check(len(behind) > 20, f"only {len(behind)} items can be pressed")
    press(find("push button", opener))
    open_modal(name)
    check_out_of_reach(behind)
    open_modal(name)  # still
    act()
    sheet = [item for item in tree() if item.get_n_actions() > 0]
    press(find("push button", closer))
    find("page tab list", texts["tab_list"])
    check_out_of_reach(sheet)


def wait_for_photo(position):
    """Waits until the photo of this position in its group has the focus in the preview and tells its position."""
    told = f" · {position} {texts['word_of']} "
    wait_for(f"photo {position}", lambda: [item for item in tree() if has_state(item, Atspi.StateType.FOCUSED)
                                           and told in item.get_description()])


def step_in_preview():
    wait_for_photo(1)
    press(find("push button", texts["photo_next"]))
    wait_for_photo(2)


def check(condition, fault):
    if not condition:
        sys.exit(fault)


def main():
    open_modal(texts["onboard_title_welcome"])
    for page in range(1, 4):
        find("label", texts["page_of"].replace("%1", str(page)).replace("%2", "4"))
        press(find("push button", texts["btn_next"]))
    press(find("push button", texts["btn_start"]))

    tabs = find("page tab list", texts["tab_list"])
    names = [item.get_name() for item in tree(tabs) if item.get_role_name() == "page tab"]
    check(names == [texts["tab_" + tab] for tab in ("cleanup", "uninstall", "startup", "duplicates", "history")],
          f"the tabs are {names}")

    press(find("push button", texts["btn_scan"]))
    find("alert", texts["status_finished"])
    rows = tree(find("list", texts["tab_cleanup"]))
    headings = [item.get_name() for item in rows if item.get_role_name() == "heading"]
    first_row = next(item for item in rows if item.get_role_name() == "check box")
    check(first_row.get_description().startswith(headings[0] + ", "), f"not told with its heading: {headings[0]}")

    for opener, title, closer in (("btn_storage_breakdown", "storage_breakdown_title", "menu_close"),
                                  ("btn_empty_trash", "alert_empty_trash_title", "btn_cancel"),
                                  ("btn_trash_selection", "alert_confirm_delete_title", "btn_cancel")):
        pass_modal(texts[opener], texts[title], texts[closer])

    press(find("page tab", texts["tab_duplicates"]))
    press(find("push button", texts["btn_allow_photos"]))
    preview = texts["photo_preview"] + ", "
    opener = wait_for("a photo", lambda: [item.get_name() for item in tree() if item.get_name().startswith(preview)])[0]
    pass_modal(opener, opener.removeprefix(preview), texts["menu_close"], step_in_preview)


with tempfile.TemporaryDirectory() as folder:
    subprocess.run([sample_disk, f"{folder}/disk"], check=True, stdout=subprocess.DEVNULL)
    environment = dict(os.environ, LC_ALL="en_US.UTF-8", LUMVALE_DISK=f"{folder}/disk", LUMVALE_HOME="/Users/camille",
                       LUMVALE_SETTINGS=folder, QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
    process = subprocess.Popen([lumvale], env=environment)
    try:
        Atspi.init()
        wait_for("the program", program)
        main()
        check(process.poll() is None, "the program has ended")
    finally:
        process.kill()
        process.wait()
        # The sample has locked files.
        subprocess.run(["chattr", "-Rf", "-i", folder], check=False)
