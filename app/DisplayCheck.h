// SPDX-License-Identifier: MIT
// A QApplication that finds no display aborts, with several lines for developers. A user gets one line and a status.
#pragma once

/// Lives round the construction of each application object: if that fails, the process ends with status 1 and one line on
/// standard error. One at a time. Thread: the main one, before there is another.
class DisplayCheck
{
public:
    /// Chooses Wayland where there is nothing else to connect to, which Qt does in some sessions only.
    DisplayCheck();
    DisplayCheck(const DisplayCheck &) = delete;
    DisplayCheck &operator=(const DisplayCheck &) = delete;
    /// Lets out what Qt had to say meanwhile.
    ~DisplayCheck();
};
