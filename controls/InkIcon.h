#pragma once

#include <QIcon>
#include <QString>

namespace bw {

// An icon from an SVG resource. Its "currentColor", for what stands on the ground, is light on a
// dark desktop and dark on a light one.
QIcon inkIcon(const QString& resource);

}  // namespace bw
