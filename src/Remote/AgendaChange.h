#pragma once

#include <QJsonObject>

namespace mivora {

/// Whether two agendas in their JSON form differ in more than the time that they were made at.
bool showsChange(const QJsonObject &before, const QJsonObject &after);

} // namespace mivora
