#!/usr/bin/python3
"""A tray applet as many are written: Python on GTK, with the indicator library."""

import gi

gi.require_version("Gtk", "3.0")
gi.require_version("AyatanaAppIndicator3", "0.1")
from gi.repository import AyatanaAppIndicator3, Gtk  # noqa: E402

menu = Gtk.Menu()
end = Gtk.MenuItem(label="Quit")
end.connect("activate", Gtk.main_quit)
menu.append(end)
menu.show_all()
indicator = AyatanaAppIndicator3.Indicator.new(
    "bare", "x-office-calendar", AyatanaAppIndicator3.IndicatorCategory.APPLICATION_STATUS
)
indicator.set_status(AyatanaAppIndicator3.IndicatorStatus.ACTIVE)
indicator.set_menu(menu)
Gtk.main()
