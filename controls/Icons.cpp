#include "controls/Icons.h"

#include "controls/InkIcon.h"

// The pictures lie in a static library: a program that uses it has to be told.
static void registerPictures() { Q_INIT_RESOURCE(icons); }

namespace bw {

QIcon icon(const char* name) {
  static const bool registered = (registerPictures(), true);
  static_cast<void>(registered);
  return inkIcon(QString(":/icons/%1.svg").arg(name));
}

}  // namespace bw
