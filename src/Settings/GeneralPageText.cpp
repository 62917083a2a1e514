#include "Settings/GeneralPageText.h"

#include <QCoreApplication>

namespace mivora {

namespace {

/// The context of the texts for translators: that of the page's view.
struct GeneralPage
{
    Q_DECLARE_TR_FUNCTIONS(GeneralPage)
};

} // namespace

QString leadMinutesText(int minutes)
{
    if (minutes == 0)
        return GeneralPage::tr("When it starts");
    return GeneralPage::tr("%n minute(s) before", nullptr, minutes);
}

QString panelCornerText(PanelCorner corner)
{
    switch (corner) {
    case PanelCorner::topRight:
        return GeneralPage::tr("Top right");
    case PanelCorner::topLeft:
        return GeneralPage::tr("Top left");
    case PanelCorner::bottomRight:
        return GeneralPage::tr("Bottom right");
    case PanelCorner::bottomLeft:
        return GeneralPage::tr("Bottom left");
    }
    return {};
}

QString titleWidthText(int characters)
{
    return GeneralPage::tr("%n character(s)", nullptr, characters);
}

} // namespace mivora
