#include "Settings/GeneralPageText.h"

#include <QCoreApplication>

namespace mivora {

namespace {

QString translated(const char *text)
{
    return QCoreApplication::translate("GeneralPage", text);
}

} // namespace

QString leadMinutesText(int minutes)
{
    if (minutes == 0)
        return translated("When it starts");
    const QString text = minutes == 1 ? translated("%1 minute before") : translated("%1 minutes before");
    return text.arg(minutes);
}

QString panelCornerText(PanelCorner corner)
{
    switch (corner) {
    case PanelCorner::topRight:
        return translated("Top right");
    case PanelCorner::topLeft:
        return translated("Top left");
    case PanelCorner::bottomRight:
        return translated("Bottom right");
    case PanelCorner::bottomLeft:
        return translated("Bottom left");
    }
    return {};
}

QString titleWidthText(int characters)
{
    return translated("%1 characters").arg(characters);
}

} // namespace mivora
