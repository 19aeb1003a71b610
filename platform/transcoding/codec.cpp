#include "codec.h"

#include "avx2.h"

namespace vel::transcoding_details {

constinit std::atomic<bool> g_isAvx2Allowed{true};

Codec::~Codec() = default;

}  // namespace vel::transcoding_details
