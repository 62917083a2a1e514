#pragma once

#include "Meetings/Service.h"

#include <QString>

namespace mivora {

/// The name of \a service in the user's language. Services are called what their makers call them: only
/// "Link", which stands for any other one, is translated.
QString serviceName(Service service);

} // namespace mivora
