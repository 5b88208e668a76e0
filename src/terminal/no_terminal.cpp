#include "terminal/terminal.h"

namespace zo::term {

base::Result<std::unique_ptr<platform::Window>> OpenTerminal(const platform::WindowOptions&) {
    return base::Failure{
        "The game plays in a terminal on Linux alone; without --terminal it opens a window."};
}

}  // namespace zo::term
