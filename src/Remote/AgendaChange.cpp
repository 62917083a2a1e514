#include "Remote/AgendaChange.h"

namespace mivora {

bool showsChange(const QJsonObject &before, const QJsonObject &after)
{
    QJsonObject left = before;
    QJsonObject right = after;
    left.remove(QStringLiteral("now"));
    right.remove(QStringLiteral("now"));
    return left != right;
}

} // namespace mivora
