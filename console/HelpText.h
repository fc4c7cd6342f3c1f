// SPDX-License-Identifier: MIT
// The part of --help that no single option can tell: which options act together, where a password is safe,
// what the exit status means. The manual page (packaging/man/torvane_console.1) says the same with examples.
#pragma once

/// Up to the separators of GENICAM_GENTL64_PATH, which are the platform's.
extern const char *const helpFooter;
/// What follows them.
extern const char *const helpEnd;
