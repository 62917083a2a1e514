#pragma once

#include "KeloTheme/ViewHost.h"
#include "Platform/PluginFile.h"

namespace kelo {

class Appearance;

/// Loads the views' plug-in ($MIVORA_VIEWS, see PluginFile) on first need. Without it the program goes on;
/// windows are then absent.
class ViewLoader final
{
public:
    /// `appearance` outlives the loader and all windows.
    explicit ViewLoader(Appearance &appearance);
    /// To be called before the application object ends. Windows that are left by then are deleted.
    ~ViewLoader();
    Q_DISABLE_COPY_MOVE(ViewLoader)

    /// A hidden window that belongs to the caller; null, with a line in the log, when it can't be made.
    QWindow *createWindow(const ViewSpec &spec);

    /// The room, in logical pixels, that a view of `size` takes in text as large as the user wants it.
    QSize scaled(const QSize &size) const;

    const Appearance &appearance() const { return m_appearance; }

    /// To be called after a window was deleted that is not needed soon: frees the engine with the last one.
    void releaseUnused();

private:
    bool load();

    Appearance &m_appearance;
    mivora::PluginFile m_plugin{"mivora-views", "MIVORA_VIEWS"};
    ViewHost *m_host = nullptr;
    bool m_hasFailed = false;
};

} // namespace kelo
