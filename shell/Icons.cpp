#include "shell/Icons.h"

#include <array>
#include <string_view>

// The pictures lie in a static library: a program that uses it has to be told.
static void registerPictures() { Q_INIT_RESOURCE(icons); }

namespace bw {
namespace {

struct IconRow {
  std::string_view name;
  const char* inTheme;  // the desktop's name of the same action
};

constexpr std::array kIcons{
    IconRow{"New", "document-new"},     IconRow{"Print", "document-print"},
    IconRow{"Delete", "edit-delete"},   IconRow{"Back", "go-previous"},
    IconRow{"Right", "go-next"},        IconRow{"Stop", "process-stop"},
    IconRow{"Refresh", "view-refresh"}, IconRow{"Home", "go-home"},
    IconRow{"Search", "edit-find"},
};

}  // namespace

QIcon icon(const char* name) {
  static const bool registered = (registerPictures(), true);
  static_cast<void>(registered);
  const QString own = QString(":/icons/%1.svg").arg(name);
  for (const IconRow& row : kIcons)
    if (row.name == name && QIcon::hasThemeIcon(row.inTheme))
      return QIcon::fromTheme(row.inTheme, QIcon(own));
  return QIcon(own);
}

}  // namespace bw
