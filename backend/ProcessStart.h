// SPDX-License-Identifier: MIT
// What a program of ours does first of all, before a producer is loaded or a password is read. Each platform has a
// source of its own.
#pragma once

/// On Windows, has the console speak UTF-8, whatever its code page, until the process ends, and reads other input byte by
/// byte; and where there is no console and nothing else to print to, prints to a file of the user (OutputLogWindows.h).
/// Opens those of the standard streams that are closed on the null device, so that no file which a producer opens takes
/// their place and gets our output; ignores broken pipes, so that no reader who leaves ends an operation half way; and
/// switches core dumps off, which would hold passwords.
/// Failures are ignored: each is a precaution. Thread: the main one, before there is another.
void prepareProcess();
