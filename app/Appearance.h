// SPDX-License-Identifier: MIT
// What the window looks like on any desktop: rows, fields and their style sheets name light backgrounds and are measured
// in pixels of 96 dpi, so the rest of the window is light too, and all of it grows with the screen's density.
#pragma once

/// Switches Qt's scaling by the screen's density on, and chooses the style that draws with the palette alone; the option
/// -style still chooses another. Connects to the display for a moment, which fails as a QApplication does.
/// \param argv  the program's, of which none is taken; ends with a null pointer
/// Thread: the main one, before the QApplication is made.
void prepareAppearance(int argc, char **argv);

/// Gives the application a light palette, whatever the desktop's is or becomes. Thread: GUI, before a widget is made.
void useLightPalette();
