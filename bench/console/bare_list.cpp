// SPDX-License-Identifier: MIT
// The baseline of torvane_console --list-devices: the same GenTL calls on the producer of the command line, and the
// answers on standard output.
#include "BareProducer.h"

#include <cstdio>

int main(int, char *argv[])
{
    BareProducer producer(argv[1]);
    producer.open();
    const std::vector<std::string> &ids = producer.list();
    for (const std::string &id : ids)
        producer.probe(id.c_str());
    for (const std::string &id : ids) {
        for (const DEVICE_INFO_CMD value :
             {DEVICE_INFO_MODEL, DEVICE_INFO_SERIAL_NUMBER, DEVICE_INFO_USER_DEFINED_NAME}) {
            producer.ask(id.c_str(), value);
            std::printf("%s | ", producer.answer());
        }
        std::printf("%s\n", id.c_str());
    }
}
