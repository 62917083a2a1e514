#include "App/RunApplication.h"

#include "App/Output.h"

namespace mivora {

int runApplication(int &, char **)
{
    complain("there is no tray yet");
    return 1;
}

} // namespace mivora
