// SPDX-License-Identifier: MIT
// The baseline of torvane list and torvane change over many cameras: the same GenTL calls on the producer of the command
// line, and nothing else. scripts/trial-fleet --scale compares the calls and runs both.
//
//   bare_fleet PRODUCER list
//   bare_fleet PRODUCER change OLD    the new password of each camera is "new-" and its identifier
#include "BareProducer.h"

int main(int argc, char *argv[])
{
    BareProducer producer(argv[1]);
    producer.open();
    const std::vector<std::string> &ids = producer.list();
    for (const std::string &id : ids) {
        for (const DEVICE_INFO_CMD value : {DEVICE_INFO_MODEL, DEVICE_INFO_SERIAL_NUMBER,
                                            DEVICE_INFO_USER_DEFINED_NAME, DEVICE_INFO_ACCESS_STATUS})
            producer.ask(id.c_str(), value);
    }
    for (const std::string &id : ids)
        producer.look(id.c_str());
    for (const std::string &id : ids) {
        if (argc > 3)
            producer.change(id.c_str(), argv[3], "new-" + id);
    }
}
