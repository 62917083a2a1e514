#include "KeloHotkey/backends/GnomeKeybinding.h"

#include "KeloHotkey/KeyboardLayout.h"
#include "KeloHotkey/VirtualKeys.h"
#include "Platform/linux/Gio.h"

#include <QByteArrayList>
#include <QCoreApplication>
#include <QFile>
#include <QStandardPaths>
#include <algorithm>
#include <string_view>
#include <vector>

namespace kelo {

namespace {

constexpr const char *daemonSchema = "org.gnome.settings-daemon.plugins.media-keys";
constexpr const char *entrySchema = "org.gnome.settings-daemon.plugins.media-keys.custom-keybinding";
constexpr const char *entriesKey = "custom-keybindings";

// Where GNOME keeps keys of its own. Not every version has each.
constexpr const char *keySchemas[] = {"org.gnome.desktop.wm.keybindings", "org.gnome.shell.keybindings",
                                      "org.gnome.mutter.keybindings", "org.gnome.mutter.wayland.keybindings",
                                      daemonSchema};

// What desktops write for each, in lower case.
constexpr std::pair<std::string_view, std::uint32_t> modifierNames[] = {
    {"shift", shiftKey}, {"control", controlKey}, {"ctrl", controlKey},  {"primary", controlKey},
    {"alt", optionKey},  {"mod1", optionKey},     {"super", commandKey}, {"mod4", commandKey},
};

bool typesKey(std::uint16_t keyCode, const QString &name)
{
    // What is above Tab is bound by its place.
    if (name == QLatin1String("Above_Tab"))
        return keyCode == virtualGrave;
    return !name.isEmpty() && KeyboardLayout::symbolName(keyCode).compare(name, Qt::CaseInsensitive) == 0;
}

QString acceleratorOf(const HotKeyCombo &combo)
{
    return combo.keysIn("<Control> <Alt> <Shift> <Super>").join(QString());
}

// Nothing of this depends on what runs already, as at login the daemon may come later.
bool hasDaemon()
{
    static constexpr const char *desktops[] = {"GNOME", "Unity", "Pantheon", "Budgie"};
    const auto names = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(QLatin1Char(':'));
    const auto isNamed = [&](const char *desktop) { return names.contains(QLatin1String(desktop)); };
    return std::ranges::any_of(desktops, isNamed) && !QFile::exists(QStringLiteral("/.flatpak-info"));
}

} // namespace

/// The settings of a schema, which need not be installed: then there are none. GIO ends a program that asks
/// for those of a schema that isn't there.
class GnomeSettings final
{
public:
    explicit GnomeSettings(const char *schema, const QString &path = {})
    {
        const auto source = KELO_GIO(g_settings_schema_source_get_default);
        GSettingsSchemaSource *schemas = source ? source() : nullptr;
        if (schemas)
            m_schema = KELO_GIO(g_settings_schema_source_lookup)(schemas, schema, true);
        if (m_schema)
            m_settings = KELO_GIO(g_settings_new_full)(m_schema, nullptr,
                                                       path.isEmpty() ? nullptr : path.toUtf8().constData());
    }

    ~GnomeSettings()
    {
        if (!m_schema)
            return;
        KELO_GIO(g_object_unref)(m_settings);
        KELO_GIO(g_settings_schema_unref)(m_schema);
    }
    Q_DISABLE_COPY_MOVE(GnomeSettings)

    /// Null where the schema isn't installed.
    GSettings *get() const { return m_settings; }

    QStringList keys() const
    {
        return m_schema ? takenFrom(KELO_GIO(g_settings_schema_list_keys)(m_schema)) : QStringList();
    }

    /// The value of a key of the schema that is a list of texts; nothing for others.
    QStringList texts(const QString &key) const
    {
        GVariant *value = KELO_GIO(g_settings_get_value)(m_settings, key.toUtf8().constData());
        QStringList list;
        if (g_variant_is_of_type(value, G_VARIANT_TYPE_STRING_ARRAY))
            list = takenFrom(g_variant_dup_strv(value, nullptr));
        g_variant_unref(value);
        return list;
    }

    QString text(const char *key) const
    {
        const std::unique_ptr<char, decltype(&g_free)> text(KELO_GIO(g_settings_get_string)(m_settings, key),
                                                            &g_free);
        return QString::fromUtf8(text.get());
    }

    void set(const char *key, const QString &text)
    {
        KELO_GIO(g_settings_set_string)(m_settings, key, text.toUtf8().constData());
    }

private:
    static QStringList takenFrom(char **texts)
    {
        QStringList list;
        for (char **text = texts; *text; ++text)
            list.append(QString::fromUtf8(*text));
        g_strfreev(texts);
        return list;
    }

    GSettingsSchema *m_schema = nullptr;
    GSettings *m_settings = nullptr;
};

std::optional<HotKeyCombo> comboOfAccelerator(const QString &text)
{
    // "<Control", "<Alt", "j".
    QStringList parts = text.split(QLatin1Char('>'));
    const QString key = parts.takeLast();
    HotKeyCombo combo{.modifiers = 0};
    for (const QString &part : parts) {
        const std::string name = part.mid(1).toLower().toStdString();
        const auto *known =
            std::ranges::find(modifierNames, name, &std::pair<std::string_view, std::uint32_t>::first);
        if (known == std::end(modifierNames))
            return std::nullopt;
        combo.modifiers |= known->second;
    }
    for (const KeyCodePair &pair : keyCodePairs) {
        combo.keyCode = pair.virtualKey;
        if (typesKey(pair.virtualKey, key))
            return combo;
    }
    return std::nullopt;
}

std::unique_ptr<GnomeKeybinding> GnomeKeybinding::create(const HotKeyPurpose &purpose,
                                                         std::function<void()> changed)
{
    if (!hasDaemon())
        return nullptr;
    std::unique_ptr<GnomeKeybinding> made(new GnomeKeybinding(purpose, std::move(changed)));
    return made->m_daemon->get() && made->m_entry->get() ? std::move(made) : nullptr;
}

GnomeKeybinding::GnomeKeybinding(const HotKeyPurpose &purpose, std::function<void()> changed)
    : m_purpose(purpose), m_changed(std::move(changed)),
      m_path(QStringLiteral("/org/gnome/settings-daemon/plugins/media-keys/custom-keybindings/mivora-%1/")
                 .arg(purpose.name)),
      m_daemon(std::make_unique<GnomeSettings>(daemonSchema)),
      m_entry(std::make_unique<GnomeSettings>(entrySchema, m_path))
{
    const auto tell = [](GSettings *, char *, void *self) {
        static_cast<GnomeKeybinding *>(self)->m_changed();
    };
    for (const auto &settings : {m_daemon->get(), m_entry->get()}) {
        if (settings && m_changed)
            KELO_GIO(g_signal_connect_data)
        (settings, "changed", GCallback(+tell), this, nullptr, GConnectFlags(0));
    }
}

GnomeKeybinding::~GnomeKeybinding() = default;

bool GnomeKeybinding::exists() const
{
    return m_daemon->texts(QLatin1String(entriesKey)).contains(m_path);
}

bool GnomeKeybinding::isUsed(const HotKeyCombo &combo) const
{
    const auto isCombo = [&](const QString &text) { return comboOfAccelerator(text) == combo; };
    for (const char *schema : keySchemas) {
        const GnomeSettings settings(schema);
        for (const QString &key : settings.keys()) {
            if (std::ranges::any_of(settings.texts(key), isCombo))
                return true;
        }
    }
    return std::ranges::any_of(m_daemon->texts(QLatin1String(entriesKey)), [&](const QString &path) {
        return path != m_path && isCombo(GnomeSettings(entrySchema, path).text("binding"));
    });
}

bool GnomeKeybinding::set(const HotKeyCombo &combo)
{
    if (acceleratorOf(combo).isEmpty() || isUsed(combo))
        return false;
    QString program = m_purpose.command.section(QLatin1Char(' '), 0, 0);
    if (QStandardPaths::findExecutable(program).isEmpty())
        program = QCoreApplication::applicationFilePath();
    m_entry->set("name", m_purpose.description);
    m_entry->set("command", program + QLatin1Char(' ') + m_purpose.command.section(QLatin1Char(' '), 1));
    setKeys(combo);
    if (!exists())
        setEntries(m_daemon->texts(QLatin1String(entriesKey)) << m_path);
    return true;
}

void GnomeKeybinding::setKeys(const std::optional<HotKeyCombo> &combo)
{
    m_entry->set("binding", combo ? acceleratorOf(*combo) : QString());
}

void GnomeKeybinding::remove()
{
    QStringList entries = m_daemon->texts(QLatin1String(entriesKey));
    if (entries.removeAll(m_path) == 0)
        return;
    setEntries(entries);
    for (const char *key : {"name", "command", "binding"})
        KELO_GIO(g_settings_reset)(m_entry->get(), key);
}

void GnomeKeybinding::setEntries(const QStringList &paths)
{
    if (paths.isEmpty())
        return KELO_GIO(g_settings_reset)(m_daemon->get(), entriesKey);
    QByteArrayList texts;
    std::vector<const char *> list;
    for (const QString &path : paths)
        list.push_back(texts.emplace_back(path.toUtf8()).constData());
    list.push_back(nullptr);
    KELO_GIO(g_settings_set_strv)(m_daemon->get(), entriesKey, list.data());
}

// The user can change the entry in the settings of the desktop, or remove it: that is a no.
HotKeyState GnomeKeybinding::state(const HotKeyCombo &combo) const
{
    if (!exists())
        return {HotKeyState::Kind::cancelled};
    const QString binding = m_entry->text("binding");
    const auto bound = comboOfAccelerator(binding);
    return {.kind = HotKeyState::Kind::registered,
            .keys = bound ? bound->text() : binding,
            .areKeysOfDesktop = bound != combo};
}

} // namespace kelo
