#include "lists/View.h"

#include "text/RuntimeError.h"
#include "text/Text.h"

namespace bw {

View::View(const char* name, const QString& caption, QWidget* parent) : QWidget(parent) {
  setObjectName(name);
  setWindowTitle(caption);
  setAccessibleName(caption);
}

void View::call(std::string_view operation, std::string_view argument) {
  for (const Operation& offered : operations_)
    if (sameName(offered.name, operation)) return offered.run(argument);
  throw RuntimeError(ErrorNumber::noSuchOperation);
}

void View::unload() {
  if (onUnload) std::exchange(onUnload, nullptr)();
}

void View::offer(std::string_view name, std::function<void()> run) {
  operations_.push_back({name, [run = std::move(run)](std::string_view) { run(); }});
}

void View::offerWithArgument(std::string_view name, std::function<void(std::string_view)> run) {
  operations_.push_back({name, std::move(run)});
}

}  // namespace bw
