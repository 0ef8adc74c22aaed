#!/usr/bin/env python3
"""A host in Python: shows what it finds, swaps two shortcuts, saves and is told of the changes.

usage: host.py LIBRARY [--read-back]

With --read-back it shows what an earlier run saved.
"""

import sys

import zelutil_host

ROUTE_TRACK, UNROUTE, FAN_OUT = 43, 49, 51


def show_setting(host, name):
    setting = host.setting(name)
    print(f"  {setting.fullName:<28} {setting.value:<12} (default {setting.defaultValue}"
          f"{', set by the user' if setting.setByUser else ''})")


def show_action(host, action_id):
    action = host.action(action_id)
    print(f"  {action.name:<28} {action.shortcut:<12} (shipped {action.shippedShortcut})"
          f"{', in the menu' if action.inMenu else ''}")


def show_places(host):
    print("Places")
    # Before anything else: what first needs the installation is told that there is none.
    print(f"  installed in {host.root()}")
    print(f"  saves to {host.native_path(host.user_file_path())}")
    warnings = host.start_warnings()
    print(f"  the start has {len(warnings)} warnings")
    for warning in warnings:
        print(f"    {warning.text}")


def show_settings(host):
    print("\nSettings")
    print(f"  {len(host.settings())} settings in {len(host.sections())} sections")
    for name in ("units", "GRID", "general::saving::autosave"):
        show_setting(host, name)
    print(f"  as values: grid {host.read_float('grid')}, autosave {host.read_bool('autosave')}, "
          f"every {host.read_int('autosave_interval')} seconds")
    try:
        host.read_int("units")
    except zelutil_host.Error as error:
        print(f"  units as a number: {error}")


def show_actions(host):
    print("\nActions")
    actions = host.actions()
    shortcut_of_user = 1
    users = sum(action.shortcutSource == shortcut_of_user for action in actions)
    print(f"  {len(actions)} actions, {users} of which have a shortcut of the user's")
    print(f"  Ctrl+S in brisk3d or ucpedit runs {host.command('brisk3d', 'Ctrl+S', fallback=True)}")


def swap_shortcuts(host, one, other):
    """Gives each the other's key, for which one of them is without a key in between."""
    key_of_one, key_of_other = host.action(one).shortcut, host.action(other).shortcut
    holder = host.set_shortcut(one, key_of_other)
    if holder:
        print(f"  {key_of_other} is refused to {one}: {holder} has it; so that one gives it up first")
    host.set_shortcut(other, "")
    host.set_shortcut(one, key_of_other)
    host.set_shortcut(other, key_of_one)


def edit_and_save(host):
    print("\nEditing and saving")
    subscriptions = [
        host.on_settings_changed(lambda names: print(f"    heard: settings {', '.join(names)}")),
        host.on_setting_changed("grid", lambda value: print(f"    heard: the grid is {value}")),
        host.on_shortcut_changed(lambda action_id, before, now: print(
            f'    heard: action {action_id}, shortcut "{before}" -> "{now}"')),
        host.on_menu_changed(lambda action_id, in_menu: print(
            f"    heard: action {action_id} is {'in' if in_menu else 'out of'} the menu")),
    ]
    swap_shortcuts(host, ROUTE_TRACK, UNROUTE)
    host.set_in_menu(FAN_OUT, not host.action(FAN_OUT).inMenu)
    result = host.save({"grid": host.text_of(0.05), "display::colors::background": "#404040"})
    print(f"  {result.text}")
    print(f"  {len(result.changedSettings)} settings changed, {len(result.savedActions)} actions are in the file")
    for item in result.notRestored:
        print(f"    will not come back: {item.text}")
    for subscription in subscriptions:
        subscription.cancel()


def read_back(host):
    print("A process started after the save reads")
    show_setting(host, "grid")
    show_setting(host, "display::colors::background")
    for action_id in (ROUTE_TRACK, UNROUTE, FAN_OUT):
        show_action(host, action_id)


def main(arguments):
    if not arguments or arguments[1:] not in ([], ["--read-back"]):
        sys.exit(__doc__)
    host = zelutil_host.Host(arguments[0])
    if arguments[1:]:
        read_back(host)
        return
    try:
        show_places(host)
    except zelutil_host.Error as error:
        sys.exit(f"{error}\n{host.diagnose()}")
    show_settings(host)
    show_actions(host)
    edit_and_save(host)


if __name__ == "__main__":
    main(sys.argv[1:])
