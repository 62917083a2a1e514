import QtQuick

// A page of groups.
Scroller {
    id: root

    default property alias groups: column.data

    contentHeight: column.height
    clip: true

    Column {
        id: column

        x: 20
        width: root.width - 40
        topPadding: 20
        bottomPadding: 12
        spacing: 20
    }
}
