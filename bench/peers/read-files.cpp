// The limit of every calendar program: the files are read, and nothing is done with them.

#include "CalendarPeer.h"

namespace {

class Nothing final : public peers::CalendarLibrary
{
    void read(const std::string &, char *) override {}

    std::vector<peers::Occurrence> occurrences(peers::Days) override { return {}; }
};

} // namespace

int main(int argc, char **argv)
{
    Nothing nothing;
    return peers::runPeer(argc, argv, nothing);
}
