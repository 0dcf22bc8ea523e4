// SPDX-License-Identifier: GPL-3.0-or-later
// What the made-up apps are about: how the apps of a theme are called, found, rated and drawn.
#pragma once

#include <QRgb>
#include <QString>
#include <QStringList>

#include <vector>

namespace veltrix::sample
{

/// A category of the App Store; texts.h says how it is called in each language.
struct Genre {
    QString name;
    /// The number that records carry, such as 6008 for Photo & Video.
    int id;
};

/// The colours of an icon's gradient.
struct Hue {
    QString name;
    QRgb top;
    QRgb bottom;
};

/// A theme in English, the language in which apps for the whole world are made.
struct Theme {
    QString name;
    /// Its place among all themes.
    int number;
    Genre primary;
    Genre secondary;
    /// The drawings on the icons of its apps: files of resources/symbols or data/glyphs.
    QStringList glyphs;
    /// log10 of the rating count of the theme's largest app in the United States.
    double topRatings;
    /// Powers of ten by which rating counts fall from the first app of the theme to the last.
    double ratingsFall;
    /// Share of the apps that cost money.
    double paidShare;
    /// App names in the order of their prominence; "{}" stands for the app's brand.
    QStringList names;
    /// Phrases that apps are found by without showing them. An app takes the topics that its name
    /// speaks of and a few others.
    std::vector<QStringList> topics;
};

const std::vector<Genre> &genres();
const std::vector<Hue> &hues();
/// In a fixed order: what is made by chance depends on it.
const std::vector<Theme> &themes();

} // namespace veltrix::sample
