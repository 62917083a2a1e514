#include "Preferences/StoredForms.h"

namespace mivora {

QStringList storedForm(const std::set<std::string> &strings)
{
    QStringList list;
    for (const std::string &string : strings)
        list.append(QString::fromStdString(string));
    return list;
}

QStringList storedForm(const std::set<Service> &services)
{
    // The order is that of the names, not that of the enumeration.
    std::set<std::string> names;
    for (const Service service : services)
        names.emplace(rawValue(service));
    return storedForm(names);
}

std::set<std::string> stringsFromStoredForm(const QStringList &list)
{
    std::set<std::string> strings;
    for (const QString &string : list)
        strings.insert(string.toStdString());
    return strings;
}

std::set<Service> servicesFromStoredForm(const QStringList &list)
{
    std::set<Service> services;
    for (const QString &name : list) {
        if (const auto service = serviceFromRawValue(name.toStdString()))
            services.insert(*service);
    }
    return services;
}

} // namespace mivora
