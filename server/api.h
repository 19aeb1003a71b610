#pragma once

#include <vector>

#include "catalogues.h"
#include "http.h"
#include "metrics.h"

namespace server {

/// What the server answers: each path and method is one function. Any thread; the catalogues and the metrics must
/// outlive it.
class Api
{
public:
    Api(const Catalogues& catalogues, Metrics& metrics) : m_rCatalogues(catalogues), m_rMetrics(metrics) {}

    HttpAnswer answer(const HttpRequest& request) const;

    /// The names of all routes, the first for what reached none.
    static std::vector<const char*> routes();

private:
    const Catalogues& m_rCatalogues;
    Metrics& m_rMetrics;
};

}  // namespace server
