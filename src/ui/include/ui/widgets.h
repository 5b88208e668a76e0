#pragma once

// Everything that a screen is put together from, in one include.
#include "ui/bars.h"
#include "ui/button.h"
#include "ui/menu.h"
#include "ui/pane.h"
