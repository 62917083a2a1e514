#pragma once

#include <functional>
#include <future>
#include <map>
#include <set>
#include <string>

namespace mivora {

/// Tells whether files and folders answer: one of a network that hangs holds up whoever looks at it, and
/// nothing ends that but the network. So a thread of its own looks first; it is left to itself when it hangs.
class FolderProbe final
{
public:
    /// `onAnswer` is called on the thread that was left to itself, when what hung has answered.
    explicit FolderProbe(std::function<void()> onAnswer) : m_onAnswer(std::move(onAnswer)) {}

    /// Whether `path` answers, be it that it isn't there. Known at once for one that answered before. One
    /// that hangs is logged once.
    bool answers(const std::string &path);

private:
    std::function<void()> m_onAnswer;
    std::set<std::string> m_answered;
    std::map<std::string, std::future<void>> m_hanging;
};

} // namespace mivora
