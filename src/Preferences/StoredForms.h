#pragma once

#include "Meetings/Service.h"

#include <QStringList>
#include <set>
#include <string>

namespace mivora {

/// The forms in which sets are stored: lists of strings in ascending order.
QStringList storedForm(const std::set<std::string> &strings);
QStringList storedForm(const std::set<Service> &services);

std::set<std::string> stringsFromStoredForm(const QStringList &list);

/// Names that no service has are left out.
std::set<Service> servicesFromStoredForm(const QStringList &list);

} // namespace mivora
