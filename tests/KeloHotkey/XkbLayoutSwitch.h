#pragma once

struct xcb_connection_t;

/// Switches the display's keyboard to the layout with this index, as a user does with the layout key.
void lockLayout(xcb_connection_t *connection, int index);
