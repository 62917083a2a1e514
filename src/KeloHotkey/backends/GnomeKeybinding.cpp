#include "KeloHotkey/backends/GnomeKeybinding.h"

#include "KeloHotkey/backends/Accelerator.h"
#include "Platform/linux/Gio.h"

#include <QCoreApplication>
#include <QFile>
#include <QStandardPaths>
#include <algorithm>
#include <array>

namespace kelo {

namespace {

constexpr const char *daemonSchema = "org.gnome.settings-daemon.plugins.media-keys";
constexpr const char *entrySchema = "org.gnome.settings-daemon.plugins.media-keys.custom-keybinding";
constexpr const char *entriesKey = "custom-keybindings";

// Where GNOME keeps keys of its own. Not every version has each.
constexpr std::array keySchemas{"org.gnome.desktop.wm.keybindings", "org.gnome.shell.keybindings",
                                "org.gnome.mutter.keybindings", "org.gnome.mutter.wayland.keybindings",
                                daemonSchema};

// Nothing of this depends on what runs already, as at login the daemon may come later.
bool hasDaemon()
{
    static constexpr std::array desktops{QLatin1String("GNOME"), QLatin1String("Unity"),
                                         QLatin1String("Pantheon"), QLatin1String("Budgie")};
    const auto names = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(QLatin1Char(':'));
    return std::ranges::any_of(desktops, [&](QLatin1String desktop) { return names.contains(desktop); }) &&
           !QFile::exists(QStringLiteral("/.flatpak-info"));
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

    bool exists() const { return m_schema; }

    QStringList keys() const
    {
        gchar **names = m_schema ? KELO_GIO(g_settings_schema_list_keys)(m_schema) : nullptr;
        QStringList list;
        for (gchar **name = names; name && *name; ++name)
            list.append(QString::fromUtf8(*name));
        g_strfreev(names);
        return list;
    }

    /// The value of a key of the schema that is a text or a list of texts; nothing for others.
    QStringList texts(const QString &key) const
    {
        GVariant *value = KELO_GIO(g_settings_get_value)(m_settings, key.toUtf8().constData());
        QStringList list;
        if (g_variant_is_of_type(value, G_VARIANT_TYPE_STRING)) {
            list.append(QString::fromUtf8(g_variant_get_string(value, nullptr)));
        } else if (g_variant_is_of_type(value, G_VARIANT_TYPE_STRING_ARRAY)) {
            for (gsize i = 0; i < g_variant_n_children(value); ++i) {
                GVariant *text = g_variant_get_child_value(value, i);
                list.append(QString::fromUtf8(g_variant_get_string(text, nullptr)));
                g_variant_unref(text);
            }
        }
        g_variant_unref(value);
        return list;
    }

    QString text(const char *key) const { return texts(QLatin1String(key)).value(0); }

    void set(const char *key, const QString &text)
    {
        KELO_GIO(g_settings_set_value)(m_settings, key, g_variant_new_string(text.toUtf8().constData()));
    }

    void set(const char *key, const QStringList &texts)
    {
        GVariantBuilder builder;
        g_variant_builder_init(&builder, G_VARIANT_TYPE_STRING_ARRAY);
        for (const QString &text : texts)
            g_variant_builder_add(&builder, "s", text.toUtf8().constData());
        KELO_GIO(g_settings_set_value)(m_settings, key, g_variant_builder_end(&builder));
    }

    void reset(const char *key) { KELO_GIO(g_settings_reset)(m_settings, key); }

    /// Calls `changed` with `context` at each change, until this is gone.
    void onChange(void (*changed)(GSettings *, char *, void *), void *context)
    {
        KELO_GIO(g_signal_connect_data)
        (m_settings, "changed", GCallback(changed), context, nullptr, GConnectFlags(0));
    }

private:
    GSettingsSchema *m_schema = nullptr;
    GSettings *m_settings = nullptr;
};

std::unique_ptr<GnomeKeybinding> GnomeKeybinding::create(const HotKeyPurpose &purpose)
{
    if (!hasDaemon())
        return nullptr;
    std::unique_ptr<GnomeKeybinding> made(new GnomeKeybinding(purpose));
    return made->m_daemon->exists() && made->m_entry->exists() ? std::move(made) : nullptr;
}

void GnomeKeybinding::forget(const HotKeyPurpose &purpose)
{
    if (const auto known = create(purpose); known && known->hasEntry())
        known->removeEntry();
}

GnomeKeybinding::GnomeKeybinding(const HotKeyPurpose &purpose)
    : m_purpose(purpose), m_path(QStringLiteral("/org/gnome/settings-daemon/plugins/media-keys/"
                                                "custom-keybindings/mivora-%1/")
                                     .arg(purpose.name)),
      m_daemon(std::make_unique<GnomeSettings>(daemonSchema)),
      m_entry(std::make_unique<GnomeSettings>(entrySchema, m_path))
{
    if (!m_daemon->exists() || !m_entry->exists())
        return;
    for (GnomeSettings *settings : {m_daemon.get(), m_entry.get()})
        settings->onChange(
            [](GSettings *, char *, void *service) {
                Q_EMIT static_cast<GnomeKeybinding *>(service)->stateChanged();
            },
            this);
    // With the program only the setting stays, and so does the entry.
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this, [this] { m_combo.reset(); });
}

GnomeKeybinding::~GnomeKeybinding() = default;

bool GnomeKeybinding::hasEntry() const
{
    return m_daemon->texts(QLatin1String(entriesKey)).contains(m_path);
}

bool GnomeKeybinding::isUsed(const HotKeyCombo &combo) const
{
    const auto has = [&](const QStringList &accelerators) {
        return std::ranges::any_of(accelerators,
                                   [&](const QString &text) { return Accelerator::names(text, combo); });
    };
    for (const char *schema : keySchemas) {
        const GnomeSettings settings(schema);
        if (std::ranges::any_of(settings.keys(),
                                [&](const QString &key) { return has(settings.texts(key)); }))
            return true;
    }
    return std::ranges::any_of(m_daemon->texts(QLatin1String(entriesKey)), [&](const QString &path) {
        return path != m_path && has({GnomeSettings(entrySchema, path).text("binding")});
    });
}

bool GnomeKeybinding::registerHotKey(const HotKeyCombo &combo, std::uint32_t id)
{
    const QString accelerator = Accelerator::of(combo);
    if (combo == m_combo || accelerator.isEmpty() || isUsed(combo)) {
        // The desktop has come to use keys that the entry of a former run has.
        if (!m_combo)
            forget(m_purpose);
        return false;
    }
    QString program = m_purpose.command.section(QLatin1Char(' '), 0, 0);
    if (QStandardPaths::findExecutable(program).isEmpty())
        program = QCoreApplication::applicationFilePath();
    m_combo = combo;
    m_id = id;
    m_entry->set("name", m_purpose.description);
    m_entry->set("command", program + QLatin1Char(' ') + m_purpose.command.section(QLatin1Char(' '), 1));
    m_entry->set("binding", m_isSuspended ? QString() : accelerator);
    if (!hasEntry())
        m_daemon->set(entriesKey, m_daemon->texts(QLatin1String(entriesKey)) << m_path);
    Q_EMIT stateChanged();
    return true;
}

void GnomeKeybinding::unregisterHotKey(std::uint32_t id)
{
    if (!m_combo || id != m_id)
        return;
    m_combo.reset();
    removeEntry();
}

void GnomeKeybinding::removeEntry()
{
    QStringList entries = m_daemon->texts(QLatin1String(entriesKey));
    entries.removeAll(m_path);
    if (entries.isEmpty())
        m_daemon->reset(entriesKey);
    else
        m_daemon->set(entriesKey, entries);
    for (const char *key : {"name", "command", "binding"})
        m_entry->reset(key);
}

void GnomeKeybinding::suspend()
{
    m_isSuspended = true;
    if (m_combo)
        m_entry->set("binding", QString());
}

void GnomeKeybinding::resume()
{
    if (std::exchange(m_isSuspended, false) && m_combo)
        m_entry->set("binding", Accelerator::of(*m_combo));
}

// The user can change the entry in the settings of the desktop, or remove it: that is a no.
HotKeyState GnomeKeybinding::state() const
{
    if (!m_combo)
        return {};
    if (!hasEntry())
        return {HotKeyState::Kind::cancelled};
    const QString binding = m_entry->text("binding");
    if (m_isSuspended || Accelerator::names(binding, *m_combo))
        return {HotKeyState::Kind::registered, m_combo->text()};
    return {.kind = HotKeyState::Kind::registered,
            .keys = binding.isEmpty() ? QString() : Accelerator::words(binding),
            .areKeysOfDesktop = true};
}

} // namespace kelo
