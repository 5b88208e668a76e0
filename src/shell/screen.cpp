#include "shell/screen.h"

namespace Kest {

void FrameRecord::ClearAllButStanding() {
    bars = true;
    for (std::string* text : {&title, &context, &detail, &place, &mode, &entry, &right})
        text->clear();
    keys.clear();
}

}  // namespace Kest
