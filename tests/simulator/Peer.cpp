// SPDX-License-Identifier: MIT
// Another process on the simulated cameras, as a test needs one beside itself.
#include "Client.h"

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <string>
#include <thread>

namespace {

/// Opens the lock with the password of Simulator::oneCamera and sets one of bytes that are no text.
void change()
{
    Client client{Simulator::cti()};
    OpenCamera camera{client};
    client.write(camera.port, unlockPassword, "hunter22");
    client.write(camera.port, newPassword, "caf\xe9\0\0\0\0"sv);
}

/// Holds the camera until somebody ends this process. \p sign is a file that says that it is held.
void hold(const std::string &sign)
{
    Client client{Simulator::cti()};
    OpenCamera camera{client};
    std::ofstream(sign) << "held";
    std::this_thread::sleep_for(std::chrono::hours(1));
}

/// Sets the passwords "round100" to "round129" of the camera \p id, one after the other, and looks at its lock.
/// \return false if the producer refused something
bool changeOften(const std::string &id)
{
    Client client{Simulator::cti()};
    OpenCamera camera{client, id.c_str()};
    for (int round = 100; round < 130; ++round) {
        if (client.write(camera.port, newPassword, "round" + std::to_string(round)) != GC_ERR_SUCCESS ||
            client.read(camera.port, lockState, 4) != "00 00 00 00")
            return false;
    }
    return true;
}

} // namespace

int main(int argc, char **argv)
try {
    const std::string task = argc > 1 ? argv[1] : "";
    if (task == "change")
        change();
    else if (task == "hold")
        hold(argv[2]);
    else
        return changeOften(argv[2]) ? EXIT_SUCCESS : EXIT_FAILURE;
    return EXIT_SUCCESS;
} catch (const std::exception &) {
    return EXIT_FAILURE;
}
