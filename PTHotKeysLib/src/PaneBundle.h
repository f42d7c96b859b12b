// SPDX-License-Identifier: MIT
#pragma once

#include <platform/desktop/Bundle.h>

/// The bundle that holds the library's resources and texts: the pane's.
Bundle paneBundle();
