#include "KeloSparkle/engine/UpdatesPlugin.h"
