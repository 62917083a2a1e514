import QtQuick
import KeloAppearance

// A group of settings: a title, and a sheet with rows that lines part from each other.
Column {
    id: root

    property string title
    property string footnote
    default property alias rows: column.data

    width: parent ? parent.width : 0

    Accessible.role: Accessible.Grouping
    Accessible.name: title

    FormHeader {
        visible: root.title
        title: root.title
        footnote: root.footnote
    }
    Box {
        width: root.width
        height: column.height
        radius: 10
        color: Appearance.colors.groupBackground
        edge: Appearance.colors.controlBorder

        Column {
            id: column

            width: parent.width
        }
    }
}
