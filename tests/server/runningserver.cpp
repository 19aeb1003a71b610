#include "runningserver.h"

#include <clocale>

namespace tests {

const server::Catalogues& packCatalogues()
{
    static const server::Catalogues kCatalogues = [] {
        std::setlocale(LC_CTYPE, "C.UTF-8");
        answers::DataOptions options;
        options.m_sData = *vel::stringFromUtf8(WEBI18N_PACK_DIR);
        return server::Catalogues(options);
    }();
    return kCatalogues;
}

RunningServer::RunningServer(const server::Limits& limits)
    : m_tMetrics(server::Api::routes()),
      m_tApi(packCatalogues(), m_tMetrics),
      m_tServer(
          limits, [this](const server::HttpRequest& request) { return m_tApi.answer(request); },
          [this](const server::Served& served) { m_tMetrics.count(served); }),
      m_nPort(m_tServer.listen(0)),
      m_tThread([this] { m_tServer.run(2); })
{}

void RunningServer::stop()
{
    m_tServer.stop();
}

RunningServer::~RunningServer()
{
    stop();
    if (m_tThread.joinable()) {
        m_tThread.join();
    }
}

}  // namespace tests
