#pragma once

#include <QString>
#include <functional>

namespace mivora {

/// Opens links with the program that the user's desktop has chosen for them.
class Workspace
{
public:
    using Opened = std::function<void(bool)>;

    virtual ~Workspace() = default;

    /// Hands \a url to its default handler and returns at once. \a done is called later on the main thread,
    /// once: true when a handler was started, false when there is none or it failed.
    virtual void open(const QString &url, Opened done) = 0;

    /// Whether any installed program opens links of \a scheme (without the colon). Nothing is cached.
    virtual bool hasHandler(const QString &scheme) const = 0;
};

} // namespace mivora
