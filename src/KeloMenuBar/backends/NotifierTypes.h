#pragma once

#include <QByteArray>
#include <QImage>
#include <QList>
#include <QMetaType>
#include <QString>

class QDBusArgument;

// The compound types of org.kde.StatusNotifierItem.
namespace kelo {

/// (iiay): ARGB pixels in network byte order.
struct NotifierPixmap
{
    int width = 0;
    int height = 0;
    QByteArray bytes;

    static NotifierPixmap fromImage(const QImage &image);
};

/// (sa(iiay)ss)
struct NotifierToolTip
{
    QString iconName{};
    QList<NotifierPixmap> iconPixmap{};
    QString title{};
    QString description{};
};

/// Makes QtDBus know these types. To be called before an item is exported.
void registerNotifierTypes();

QDBusArgument &operator<<(QDBusArgument &argument, const NotifierPixmap &pixmap);
const QDBusArgument &operator>>(const QDBusArgument &argument, NotifierPixmap &pixmap);
QDBusArgument &operator<<(QDBusArgument &argument, const NotifierToolTip &toolTip);
const QDBusArgument &operator>>(const QDBusArgument &argument, NotifierToolTip &toolTip);

} // namespace kelo

Q_DECLARE_METATYPE(kelo::NotifierPixmap)
Q_DECLARE_METATYPE(kelo::NotifierToolTip)
