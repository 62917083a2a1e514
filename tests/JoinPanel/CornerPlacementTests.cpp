#include "JoinPanel/CornerPlacement.h"

#include <gtest/gtest.h>

namespace mivora {

TEST(CornerPlacement, keepsTwelveFromTheEdgesOfTheFreeArea)
{
    const QRectF visible(1920, 28, 1280, 740);
    const QSizeF panel(436, 206);
    EXPECT_EQ(cornerOrigin(PanelCorner::topRight, visible, panel), QPointF(2752, 40));
    EXPECT_EQ(cornerOrigin(PanelCorner::topLeft, visible, panel), QPointF(1932, 40));
    EXPECT_EQ(cornerOrigin(PanelCorner::bottomRight, visible, panel), QPointF(2752, 550));
    EXPECT_EQ(cornerOrigin(PanelCorner::bottomLeft, visible, panel), QPointF(1932, 550));
}

} // namespace mivora
