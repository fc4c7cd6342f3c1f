// SPDX-License-Identifier: MIT
// The metrics of cameras that make it hard: odd texts, no serial number, one that another bears too, nothing known.
#include "MetricsFile.h"

#include <gtest/gtest.h>

namespace fleet {

namespace {

Camera cameraOf(std::string serial, std::string model, Password password)
{
    Camera camera;
    camera.serial = std::move(serial);
    camera.model = std::move(model);
    camera.password = password;
    return camera;
}

TEST(Metrics, HaveEachSeriesOnceAndEscapeItsLabels)
{
    const Camera all[] = {cameraOf("A\"1\\\n\xff\u202e", "M", Password::Factory),
                          cameraOf("shared", "M", Password::Factory),
                          cameraOf("shared", "M", Password::User),
                          cameraOf("shared", "Other", Password::None),
                          cameraOf("", "M", Password::User),
                          cameraOf("unknown", "M", Password::Unknown)};
    std::vector<const Camera *> cameras;
    for (const Camera &camera : all)
        cameras.push_back(&camera);
    const std::string text = metricsText(cameras, 1234567890);
    const std::string begin = "# TYPE torvane_camera_factory gauge\n";
    const std::string wanted =
        "torvane_camera_factory{serial=\"\",model=\"M\"} 0\n"
        R"(torvane_camera_factory{serial="A\"1\\\\x0a\\xff\\xe2\\x80\\xae",model="M"} 1)"
        "\n"
        "torvane_camera_factory{serial=\"shared\",model=\"M\"} 1\n"
        "torvane_camera_factory{serial=\"shared\",model=\"Other\"} 0\n"
        "# HELP torvane_check_timestamp_seconds ";
    ASSERT_NE(text.find(begin), std::string::npos);
    EXPECT_EQ(text.substr(text.find(begin) + begin.size(), wanted.size()), wanted);
}

} // namespace

} // namespace fleet
