// SPDX-License-Identifier: MIT
// The producers of a run and the cameras that they tell of. Nothing is opened but the producers' own modules: a camera
// that the run is not about stays undisturbed, and free for others.
#pragma once

#include "Camera.h"
#include "RetiredObjects.h"
#include "Status.h"

#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class GenTLLibrary;
class TLInterface;

namespace fleet {

struct Producer
{
    std::string file;
    std::optional<Reason> failure; ///< what hides some or all of its cameras
    bool isLoaded = false;
    std::string genTLVersion; ///< as in "V1.5"; empty where it was not loaded
    std::string vendor;       ///< its own words
    std::string version;      ///< its own words
    std::size_t interfaces = 0;
    std::size_t cameras = 0;
    std::chrono::milliseconds discovery{0}; ///< from the load to the last camera's name
};

/// Thread: one.
class Tree
{
public:
    /// Loads each of \p files and asks it for its interfaces and devices, in order. One that fails hides no other.
    /// \throws Interrupted
    explicit Tree(const std::vector<std::string> &files);
    Tree(const Tree &) = delete;
    Tree &operator=(const Tree &) = delete;
    /// Closes everything, children first; what is said then is dropped.
    ~Tree();

    const std::vector<Producer> &producers() const { return producers_; }
    bool hasFailure() const;
    /// As enumerated by the constructor, in order; duplicates are marked as far as that can be told without a look.
    std::vector<Camera> &cameras() { return cameras_; }

    /// Asks the interface of \p camera for its devices again, and finds the camera by its identifier there.
    /// \return null while it is away
    Device *findAgain(const Camera &camera);

private:
    void enumerate(GenTLLibrary &library, Producer &producer);
    void enumerate(TLInterface &interface, Producer &producer);

    std::vector<std::unique_ptr<GenTLLibrary>> libraries;
    std::vector<Producer> producers_;
    std::vector<Camera> cameras_;
    RetiredObjects retired; // cameras that went during the run; others may still point to them
};

/// The files of the producers: those of \p libraries, else those that the environment names. One that is named in two ways
/// stands there once: the loader would give the same module again.
std::vector<std::string> producerFiles(const std::vector<std::string> &libraries);

/// How a run ends for which \p tree has no camera: a producer that failed may hide them.
Status statusWithoutCamera(const Tree &tree);

inline constexpr const char *noCameraSentence = "There is no camera. Run 'torvane doctor' to see why.";

/// Names the producers that failed on standard error.
void tellProducerFailures(const Tree &tree);

/// What \p device tells without being opened.
Access accessOf(const Device &device);

} // namespace fleet
