#include "viewer/Icons.h"

#include <QString>

#include "controls/InkIcon.h"

// Resources of a static library are not registered by themselves; outside of any namespace.
static void registerIcons() { Q_INIT_RESOURCE(viewer_icons); }

namespace bw {

QIcon actionIcon(const char* name) {
  registerIcons();
  return inkIcon(QString(":/viewer/icons/%1.svg").arg(QLatin1String(name)));
}

}  // namespace bw
