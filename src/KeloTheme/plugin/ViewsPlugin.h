#pragma once

#include "KeloTheme/ViewHost.h"

#include <QObject>
#include <QPointer>
#include <QQmlEngine>
#include <QQuickWindow>
#include <memory>
#include <vector>

namespace kelo {

/// The plug-in's object: one QML engine for all windows, drawn by the software scene graph.
class ViewsPlugin final : public QObject, public ViewHost
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "app.kelo.ViewHost/1")
    Q_INTERFACES(kelo::ViewHost)

public:
    ViewsPlugin();

    void start(QObject &appearance) override;
    QWindow *createWindow(const ViewSpec &spec) override;
    void releaseUnused() override;
    void end() override;

private:
    QQmlEngine &engine();

    QObject *m_appearance = nullptr;
    std::unique_ptr<QQmlEngine> m_engine;
    std::vector<QPointer<QQuickWindow>> m_windows;
};

} // namespace kelo
