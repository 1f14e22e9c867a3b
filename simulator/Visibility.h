#pragma once

/// Marks what the board's library offers to tests and programs; everything else stays inside it.
#define SIMULATOR_PUBLIC __attribute__((visibility("default")))
