#pragma once

/// Marks what the shared library offers. Everything else stays hidden.
#define ORV_API __attribute__((visibility("default")))
