#pragma once

#include "KeloTheme/SystemColors.h"

#include <QAbstractNativeEventFilter>
#include <QDBusConnection>
#include <QFont>
#include <QMap>
#include <QObject>
#include <optional>

class QDBusMessage;

namespace kelo {

/// What the desktop says about its looks through org.freedesktop.portal.Settings: by keys of freedesktop.org,
/// GNOME and KDE.
struct DesktopLooks
{
    std::optional<ColorScheme> scheme;
    QColor accent;
    double textScale = 1;
    /// Family and size in points; without a size there is no wish.
    QFont font;
    bool prefersContrast = false;
    bool hasHighContrastTheme = false;
    bool prefersReducedMotion = false;
    bool hasAnimations = true;
};

/// How the desktop wants its programs to look, live: light or dark, the accent colour, contrast, the font and
/// the size of text, motion.
///
/// The scheme is the portal's; where it has no preference, that of the platform's palette.
/// MIVORA_APPEARANCE=light|dark overrules both, MIVORA_TEXT_SCALE=FACTOR the text's. Views see it as the QML
/// singleton `Appearance`. Nothing waits for the portal's answers.
class Appearance final : public QObject, public QAbstractNativeEventFilter
{
    Q_OBJECT
    Q_PROPERTY(kelo::SystemColors colors READ colors NOTIFY changed)
    Q_PROPERTY(double textScale READ textScale NOTIFY changed)
    Q_PROPERTY(QString fontFamily READ fontFamily NOTIFY changed)
    Q_PROPERTY(int motion READ motion NOTIFY changed)
    Q_PROPERTY(bool usesKeyboard READ usesKeyboard NOTIFY usesKeyboardChanged)

public:
    explicit Appearance(const QDBusConnection &bus = QDBusConnection::sessionBus(),
                        QObject *parent = nullptr);

    bool isDark() const { return m_scheme == ColorScheme::dark; }

    const SystemColors &colors() const { return m_colors; }

    /// The factor for font sizes: what the user has set for legibility, times the size of the desktop's font
    /// by the usual one of 10 points. From 0.8 to 2: what views have room for.
    double textScale() const { return m_textScale; }

    /// Of the desktop's font.
    QString fontFamily() const { return m_fontFamily; }

    /// What lengths of animations are multiplied by: 0 where the user wants none, else 1.
    int motion() const { return m_motion; }

    /// Asks the X server for what only its settings manager knows (the XSETTINGS of XFCE and others), and
    /// follows it from then on. To be called before the first view is made.
    void readXSettings();

    /// Whether the user's last input into a window was a key, so that it is to be seen where the keyboard is.
    bool usesKeyboard() const { return m_usesKeyboard; }

Q_SIGNALS:
    void changed();
    void usesKeyboardChanged();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    bool nativeEventFilter(const QByteArray &type, void *message, qintptr *result) override;

private Q_SLOTS:
    // Takes the message as it is: QtDBus knows the type of its last argument only after the first message.
    void readOne(const QDBusMessage &signal);

private:
    void readAll();
    void update();
    void noteInput(const QEvent &event);
    ColorScheme scheme() const;

    QDBusConnection m_bus;
    DesktopLooks m_looks;
    ColorScheme m_scheme = ColorScheme::light;
    SystemColors m_colors;
    double m_textScale = 1;
    QString m_fontFamily;
    int m_motion = 1;
    QMap<QByteArray, QVariant> m_xSettings;
    std::uint32_t m_xSettingsAtom = 0;
    bool m_usesKeyboard = false;
};

} // namespace kelo
