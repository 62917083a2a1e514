// A tray applet as one writes it with GTK and the indicator library: an icon and a menu.

#include <libayatana-appindicator/app-indicator.h>

int main(int argc, char **argv)
{
    gtk_init(&argc, &argv);
    GtkWidget *menu = gtk_menu_new();
    GtkWidget *end = gtk_menu_item_new_with_label("Quit");
    g_signal_connect(end, "activate", G_CALLBACK(gtk_main_quit), NULL);
    gtk_menu_shell_append(GTK_MENU_SHELL(menu), end);
    gtk_widget_show_all(menu);
    AppIndicator *item =
        app_indicator_new("bare", "x-office-calendar", APP_INDICATOR_CATEGORY_APPLICATION_STATUS);
    app_indicator_set_status(item, APP_INDICATOR_STATUS_ACTIVE);
    app_indicator_set_menu(item, GTK_MENU(menu));
    gtk_main();
    return 0;
}
