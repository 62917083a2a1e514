#!/usr/bin/python3
"""A tray applet as many are written: Python on Qt."""

import sys

from PyQt6.QtGui import QColor, QIcon, QPixmap
from PyQt6.QtWidgets import QApplication, QMenu, QSystemTrayIcon

application = QApplication(sys.argv)
picture = QPixmap(22, 22)
picture.fill(QColor("white"))
menu = QMenu()
menu.addAction("Quit").triggered.connect(application.quit)
item = QSystemTrayIcon(QIcon(picture))
item.setContextMenu(menu)
item.show()
application.exec()
