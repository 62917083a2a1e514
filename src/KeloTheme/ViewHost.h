#pragma once

#include <QSize>
#include <QString>
#include <QVariantMap>
#include <QtPlugin>

class QObject;
class QWindow;

namespace kelo {

enum class ViewKind {
    /// A borderless translucent panel; the property `surface` tells its measures.
    floating,
    /// A window with the desktop's frame.
    ordinary,
    /// A window that is the view, without anything around it.
    popup,
};

/// A window whose content is QML.
struct ViewSpec
{
    /// The QML module, such as "JoinPanelViews".
    QString module;
    /// The component in it, such as "JoinPanelView".
    QString component;
    /// Set before the component is completed. Models are QObject pointers; views know their properties by
    /// name.
    QVariantMap properties{};
    /// Of the window, in logical pixels.
    QSize size;
    /// Whether larger text makes the window larger: not where its size was measured.
    bool growsWithText = true;
    /// The least that the user may make of an ordinary window; invalid when its size is fixed.
    QSize minimumSize{};
    /// Of an ordinary window.
    Qt::WindowFlags flags = Qt::Dialog;
    ViewKind kind = ViewKind::ordinary;
    QString title{};
    /// Whether an ordinary window blocks the one that it comes up over.
    bool isModal = false;
    /// For floating windows: an object with the properties that FloatingSurface.qml names.
    QObject *surface = nullptr;
};

/// Makes windows out of QML. Implemented by the plug-in mivora-views, so that the program itself need not
/// link Qt Quick; ViewLoader finds it.
class ViewHost
{
public:
    virtual ~ViewHost() = default;

    /// Called before all else; again only when no window is left. QML sees `appearance` as the singleton
    /// `Appearance`; it outlives every view.
    virtual void start(QObject &appearance) = 0;

    /// A hidden window that belongs to the caller; null, with a line in the log, when the view can't be made.
    virtual QWindow *createWindow(const ViewSpec &spec) = 0;

    /// Gives back the memory of the QML engine when no window is left.
    virtual void releaseUnused() = 0;

    /// Deletes the windows that still wait for it, and the engine. They must not outlive the application
    /// object; what was to be deleted by an event is not, once there are no more events.
    virtual void end() = 0;
};

} // namespace kelo

Q_DECLARE_INTERFACE(kelo::ViewHost, "app.kelo.ViewHost/1")
