// SPDX-License-Identifier: GPL-3.0-or-later
// Running sample services and clients for them.
#pragma once

#include "sample/sample_services.h"
#include "sample_printers.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

namespace veltrix::sample
{

inline Options testOptions()
{
    Options options;
    options.date = testDay();
    return options;
}

/// One set of services for all tests of a suite: they keep no state that tests could trip over.
class ServicesTest : public testing::Test
{
protected:
    static void SetUpTestSuite() { s_services = std::make_unique<SampleServices>(testOptions()); }
    static void TearDownTestSuite() { s_services.reset(); }

    static SampleServices &services() { return *s_services; }

    static httplib::Client httpClient()
    {
        httplib::Client client(services().httpOrigin().toStdString());
        client.set_url_encode(false);
        return client;
    }

private:
    static inline std::unique_ptr<SampleServices> s_services;
};

/// Trusts the services' authority and nothing else.
class SecureClient
{
public:
    explicit SecureClient(const SampleServices &services)
        : m_client(services.httpsOrigin().toStdString())
    {
        QFile file(m_folder.filePath(QStringLiteral("authority.pem")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(services.authorityPem());
        file.close();
        m_client.set_ca_cert_path(file.fileName().toLocal8Bit().constData());
        m_client.enable_server_certificate_verification(true);
    }

    httplib::Client *operator->() { return &m_client; }

private:
    QTemporaryDir m_folder;
    httplib::Client m_client;
};

} // namespace veltrix::sample
