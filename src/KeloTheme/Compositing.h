#pragma once

namespace kelo {

/// Whether translucent windows are blended with what is behind them: a compositing manager owns the selection
/// _NET_WM_CM_Sn (EWMH) on X11; always true elsewhere. MIVORA_COMPOSITING=0|1 overrules.
bool desktopComposites();

/// Whether the window manager blurs what is behind windows that ask for it (_KDE_NET_WM_BLUR_BEHIND_REGION).
bool desktopBlurs();

} // namespace kelo
