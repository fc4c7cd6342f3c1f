// SPDX-License-Identifier: MIT
// Cameras, reasons and outcomes as fields of JSON objects, by the names that the schemas in docs/schema fix. Texts of
// cameras and producers are made fit to be shown here.
#pragma once

#include "Camera.h"
#include "Outcome.h"
#include "Status.h"
#include "Tree.h"

#include <QByteArray>
#include <QJsonObject>
#include <optional>
#include <string>
#include <string_view>

namespace fleet {

/// \p bytes as a JSON text.
QJsonValue jsonText(std::string_view bytes);
/// Null where there is none.
QJsonValue jsonText(const std::optional<std::string> &bytes);

QJsonValue jsonOf(const std::optional<Reason> &reason);
QJsonObject jsonOf(const Place &place);
/// All that is known of \p camera, with the host.
QJsonObject jsonOf(const Camera &camera);
QJsonObject jsonOf(const Producer &producer);
QJsonObject jsonOf(const Summary &summary);

/// \p object on one line, with its line end.
QByteArray jsonLine(const QJsonObject &object);

} // namespace fleet
