#include "base/version.h"

namespace base {

std::string_view Version() {
    return KEST_VERSION;
}

}  // namespace base
