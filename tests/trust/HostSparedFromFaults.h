#pragma once

/// How many libraries the applets of this program have opened and not closed again.
int openLibraries();
