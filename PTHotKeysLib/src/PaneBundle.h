#pragma once

#include <Bundle.h>

/// The bundle that holds the library's resources and texts: the pane's.
Bundle paneBundle();
