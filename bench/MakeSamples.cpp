// make-samples FOLDER files|oneFile COUNT: a calendar to measure with, in a folder that is there already.

#include "CalendarSamples.h"

#include <cstdio>
#include <cstdlib>
#include <string_view>

int main(int argc, char **argv)
{
    if (argc != 4) {
        std::fputs("make-samples FOLDER files|oneFile COUNT\n", stderr);
        return 2;
    }
    const bool isOneFile = std::string_view(argv[2]) == "oneFile";
    (isOneFile ? mivora::samples::writeOneFile : mivora::samples::writeFiles)(argv[1], std::atoi(argv[3]));
    return 0;
}
