#pragma once

#include <QPluginLoader>

namespace mivora {

/// A plug-in that belongs to the program: a part that most days, or most machines, can do without. Looked for
/// in the file that `variable` names in the environment, then in lib/mivora and lib beside the program's bin
/// folder. It is loaded with the first call of get() and stays loaded until the process ends.
class PluginFile final
{
public:
    /// `name` is the file's, without ".so". Both texts must outlive the object.
    PluginFile(const char *name, const char *variable) : m_name(name), m_variable(variable) {}

    /// The plug-in's object as `Interface`; null when it can't be loaded, see errorText().
    template<typename Interface> Interface *get() { return qobject_cast<Interface *>(object()); }

    /// Why the last get() gave nothing; not translated.
    QString errorText() const { return m_loader.errorString(); }

private:
    QObject *object();

    const char *m_name;
    const char *m_variable;
    QPluginLoader m_loader;
};

} // namespace mivora
