// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/desktop_color_scheme.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QGuiApplication>

namespace veltrix
{

namespace
{

const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearanceGroup = QStringLiteral("org.freedesktop.appearance");
const QString colorSchemeKey = QStringLiteral("color-scheme");

} // namespace

DesktopColorScheme::DesktopColorScheme(QObject *parent)
    : ColorSchemeSource(parent), m_fallback(Tokens::of(QGuiApplication::palette()).scheme())
{
    askPortal();
}

ColorScheme DesktopColorScheme::colorScheme() const
{
    return m_preference.value_or(m_fallback);
}

std::optional<ColorScheme> DesktopColorScheme::schemeFromPortal(const QVariant &value)
{
    // Older portals wrap the value in a second variant.
    QVariant inner = value;
    while (inner.canConvert<QDBusVariant>())
        inner = inner.value<QDBusVariant>().variant();
    switch (inner.toUInt()) {
    case 1:
        return ColorScheme::Dark;
    case 2:
        return ColorScheme::Light;
    default:
        return std::nullopt;
    }
}

void DesktopColorScheme::askPortal()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    // Qt 6.4 connects a slot to the bus only when it knows the types of its arguments by name.
    qRegisterMetaType<QDBusVariant>();
    bus.connect(portalService, portalPath, settingsInterface, QStringLiteral("SettingChanged"),
                this, SLOT(portalSettingChanged(QString, QString, QDBusVariant)));
    QDBusMessage question = QDBusMessage::createMethodCall(
        portalService, portalPath, settingsInterface, QStringLiteral("Read"));
    question << appearanceGroup << colorSchemeKey;
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        watcher->deleteLater();
        if (reply.isValid())
            setPreference(schemeFromPortal(QVariant::fromValue(reply.value())));
    });
}

void DesktopColorScheme::portalSettingChanged(const QString &group, const QString &key,
                                              const QDBusVariant &value)
{
    if (group == appearanceGroup && key == colorSchemeKey)
        setPreference(schemeFromPortal(QVariant::fromValue(value)));
}

void DesktopColorScheme::setPreference(std::optional<ColorScheme> preference)
{
    const ColorScheme before = colorScheme();
    m_preference = preference;
    if (colorScheme() != before)
        Q_EMIT colorSchemeChanged();
}

} // namespace veltrix
