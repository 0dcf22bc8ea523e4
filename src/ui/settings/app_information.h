// SPDX-License-Identifier: GPL-3.0-or-later
// What the installed program says about itself.
#pragma once

#include <QString>
#include <QUrl>

namespace veltrix
{

/// Which service keyword searches use.
struct ResearchServiceInformation {
    enum class Kind {
        /// Apple's public search service.
        Direct,
        /// The research service that the program is configured for.
        Research,
        /// The configuration is there and wrong; `detail` is its error.
        Misconfigured,
    };
    Kind kind = Kind::Direct;
    /// Host of the research service, or the error's text.
    QString detail;
};

/// What the settings show about the program and whoever deployed it.
struct AppInformation {
    /// Version and build as the About section shows them, "1.4 (27)"; "—" when unknown.
    QString versionText = QStringLiteral("—");
    /// Address for support; empty when the deployment has none.
    QString supportEmail;
    QUrl privacyPolicy;
    QUrl termsOfUse;
    ResearchServiceInformation research;
};

} // namespace veltrix
