// SPDX-License-Identifier: GPL-3.0-or-later
// All sample services, wired together and running.
#pragma once

#include "sample/access_log.h"
#include "sample/app_store.h"
#include "sample/faults.h"
#include "sample/hints_service.h"
#include "sample/itunes_service.h"
#include "sample/loopback_server.h"
#include "sample/options.h"
#include "sample/pause.h"
#include "sample/research_queue.h"
#include "sample/research_service.h"
#include "sample/server_identity.h"
#include "sample/update_feed.h"

#include <QByteArray>

namespace veltrix::sample
{

class SampleServices
{
public:
    /// Starts everything; the services answer when this returns. Throws std::runtime_error.
    explicit SampleServices(const Options &options);
    ~SampleServices();
    SampleServices(const SampleServices &) = delete;
    SampleServices &operator=(const SampleServices &) = delete;

    /// "http://127.0.0.1:<port>"
    [[nodiscard]] QString httpOrigin() const;
    /// "https://127.0.0.1:<port>"
    [[nodiscard]] QString httpsOrigin() const;
    /// The certificate authority that clients have to trust.
    [[nodiscard]] const QByteArray &authorityPem() const { return m_identity.authorityPem; }
    /// Base64 of the key that verifies updates.
    [[nodiscard]] QByteArray updatePublicKey() const { return m_signingKey.publicKey.toBase64(); }

    /// One line a service: its name, a space, its address or value.
    [[nodiscard]] QByteArray readyLines() const;

private:
    AccessLog m_log;
    Pause m_pause;
    Faults m_faults;
    AppStore m_store;
    HintIndex m_hintIndex{m_store.catalog()};
    ServerIdentity m_identity = makeServerIdentity();
    SigningKey m_signingKey;
    LoopbackServer m_http;
    LoopbackServer m_https;
    ItunesService m_itunes;
    HintsService m_hints{m_hintIndex, m_pause};
    ResearchQueue m_researchQueue;
    ResearchService m_research;
    UpdateFeed m_updates;
};

} // namespace veltrix::sample
