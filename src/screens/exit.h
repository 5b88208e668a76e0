#pragma once

#include <string>

#include "shell/shell.h"

namespace Kest {

inline void AskToExit(Shell& shell, std::string message) {
    shell.Ask({.title = "Exit",
               .message = std::move(message),
               .yes = "Exit",
               .answered = [&shell](bool yes) {
                   if (yes) shell.Quit();
               }});
}

}  // namespace Kest
