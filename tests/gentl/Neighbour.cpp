// SPDX-License-Identifier: MIT
// The library of a vendor, which lies beside the vendor's producer.
extern "C" int torvaneTestNeighbour()
{
    return 1;
}
