#include "controls/Explanation.h"

#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "controls/Dialog.h"
#include "controls/Twips.h"

namespace bw {

QGridLayout* explainedFields(QWidget* dialog, const char* labelName, const char* explanation) {
  auto* column = new QVBoxLayout(dialog);
  auto* label = named(new QLabel(explanation), labelName, explanation);
  label->setWordWrap(true);
  label->setMinimumWidth(scaledPixels(340));
  column->addWidget(label);
  auto* fields = new QGridLayout;
  column->addLayout(fields);
  return fields;
}

}  // namespace bw
