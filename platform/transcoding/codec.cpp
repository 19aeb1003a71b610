#include "codec.h"

namespace vel::transcoding_details {

Codec::~Codec() = default;

}  // namespace vel::transcoding_details
