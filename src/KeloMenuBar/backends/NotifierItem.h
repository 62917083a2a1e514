#pragma once

#include "KeloMenuBar/backends/BusTypes.h"
#include "KeloMenuBar/backends/Presentation.h"

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QPoint>
#include <functional>
#include <utility>

namespace kelo {

/// org.kde.StatusNotifierItem on the object that is its parent, with the label that Ayatana's hosts show.
class NotifierItem final : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category CONSTANT)
    Q_PROPERTY(QString Id READ id CONSTANT)
    Q_PROPERTY(QString Title READ title)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(int WindowId READ windowId CONSTANT)
    Q_PROPERTY(QString IconThemePath READ iconThemePath)
    Q_PROPERTY(QString IconName READ iconName)
    Q_PROPERTY(QList<kelo::NotifierPixmap> IconPixmap READ iconPixmap)
    Q_PROPERTY(QString IconAccessibleDesc READ iconDescription)
    Q_PROPERTY(QString OverlayIconName READ none CONSTANT)
    Q_PROPERTY(QList<kelo::NotifierPixmap> OverlayIconPixmap READ noPixmap CONSTANT)
    Q_PROPERTY(QString AttentionIconName READ none CONSTANT)
    Q_PROPERTY(QList<kelo::NotifierPixmap> AttentionIconPixmap READ noPixmap CONSTANT)
    Q_PROPERTY(QString AttentionMovieName READ none CONSTANT)
    Q_PROPERTY(kelo::NotifierToolTip ToolTip READ toolTip)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu CONSTANT)
    Q_PROPERTY(QDBusObjectPath Menu READ menu CONSTANT)
    Q_PROPERTY(QString XAyatanaLabel READ label)
    Q_PROPERTY(QString XAyatanaLabelGuide READ labelGuide)
    Q_PROPERTY(uint XAyatanaOrderingIndex READ orderingIndex CONSTANT)

public:
    static constexpr char objectPath[] = "/StatusNotifierItem";
    static constexpr char menuPath[] = "/StatusNotifierItem/Menu";

    /// `id` names the program. `openMenu` is for hosts that leave the menu to us, and answers whether it
    /// did; hosts that are refused open theirs.
    NotifierItem(const QDBusConnection &bus, const QString &id, std::function<bool(QPoint)> openMenu,
                 QObject *exported);

    /// Shows these properties from now on; announces those that are different from before.
    void setProperties(const NotifierProperties &now);

    QString category() const { return QStringLiteral("ApplicationStatus"); }

    QString id() const { return m_id; }

    QString title() const { return m_properties.title; }

    QString status() const { return m_properties.status; }

    /// The activation token that the host gave last; once.
    QByteArray takeActivationToken() { return std::exchange(m_activationToken, {}); }

    int windowId() const { return 0; }

    QString iconThemePath() const { return m_properties.iconThemePath; }

    QString iconName() const { return m_properties.iconName; }

    /// Drawn when a host asks for it, and kept until it changes.
    QList<NotifierPixmap> iconPixmap();

    QString iconDescription() const { return m_properties.iconDescription; }

    QString none() const { return {}; }

    QList<NotifierPixmap> noPixmap() const { return {}; }

    NotifierToolTip toolTip() const { return {.title = m_properties.toolTip}; }

    bool itemIsMenu() const { return true; }

    QDBusObjectPath menu() const { return QDBusObjectPath(QLatin1String(menuPath)); }

    /// Read for the first time by a host, it is announced once more a moment later: GNOME's host reads it
    /// before it knows of it, and shows it only when it changes.
    QString label();

    /// Another host reads the item from its beginning.
    void expectHost() { m_isLabelRead = false; }

    QString labelGuide() const { return m_properties.labelGuide; }

    uint orderingIndex() const { return 0; }

public Q_SLOTS:
    void Activate(int x, int y, const QDBusMessage &call);
    void ContextMenu(int x, int y, const QDBusMessage &call);
    void SecondaryActivate(int x, int y);
    void XAyatanaSecondaryActivate(uint timestamp);
    void Scroll(int delta, const QString &orientation);
    void ProvideXdgActivationToken(const QString &token);

Q_SIGNALS:
    void NewTitle();
    void NewStatus(const QString &status);
    void NewIcon();
    void NewIconThemePath(const QString &path);
    void NewToolTip();
    void XAyatanaNewLabel(const QString &label, const QString &guide);

private:
    void openMenu(QPoint point, const QDBusMessage &call);
    void announceLabelAgain();

    QDBusConnection m_bus;
    QString m_id;
    std::function<bool(QPoint)> m_openMenu;
    NotifierProperties m_properties;
    QByteArray m_activationToken;
    bool m_isLabelRead = false;
    QList<NotifierPixmap> m_pixmaps;
};

} // namespace kelo
