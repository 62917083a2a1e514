#include "KeloMenuBar/backends/NotifierTypes.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QtEndian>

namespace kelo {

NotifierPixmap NotifierPixmap::fromImage(const QImage &image)
{
    const QImage argb = image.convertToFormat(QImage::Format_ARGB32);
    NotifierPixmap pixmap{argb.width(), argb.height(), QByteArray(argb.sizeInBytes(), Qt::Uninitialized)};
    // Lines of 32-bit pixels have no padding.
    qToBigEndian<quint32>(argb.constBits(), argb.sizeInBytes() / 4, pixmap.bytes.data());
    return pixmap;
}

void registerNotifierTypes()
{
    qDBusRegisterMetaType<NotifierPixmap>();
    qDBusRegisterMetaType<QList<NotifierPixmap>>();
    qDBusRegisterMetaType<NotifierToolTip>();
}

QDBusArgument &operator<<(QDBusArgument &argument, const NotifierPixmap &pixmap)
{
    argument.beginStructure();
    argument << pixmap.width << pixmap.height << pixmap.bytes;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, NotifierPixmap &pixmap)
{
    argument.beginStructure();
    argument >> pixmap.width >> pixmap.height >> pixmap.bytes;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const NotifierToolTip &toolTip)
{
    argument.beginStructure();
    argument << toolTip.iconName << toolTip.iconPixmap << toolTip.title << toolTip.description;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, NotifierToolTip &toolTip)
{
    argument.beginStructure();
    argument >> toolTip.iconName >> toolTip.iconPixmap >> toolTip.title >> toolTip.description;
    argument.endStructure();
    return argument;
}

} // namespace kelo
