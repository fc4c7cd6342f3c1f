// SPDX-License-Identifier: MIT
// A producer that needs the library beside it to be loaded.
extern "C" int torvaneTestNeighbour();

extern "C" int torvaneTestNeighboured()
{
    return torvaneTestNeighbour();
}
