#include "catalogues/CatalogueEditor.h"
#include "catalogues/Editors.h"
#include "controls/QtText.h"

namespace bw {
namespace {

class WardEditor : public CatalogueEditor {
 public:
  explicit WardEditor(QWidget* owner)
      : CatalogueEditor("frmEditWard", "Ward", owner),
        TxtDescription(addText("&Description:", "TxtDescription")) {
    addFoot([this] { ok(); }, [this] { cancelWard(); });
    setSize(380);
  }
  void load() { TxtDescription->setText(toQt(frmEditFacility().WardDescription)); }

 private:
  void ok() {
    frmEditFacility().WardDescription = fromQt(TxtDescription->text());
    finish(0, {});
  }

  void cancelWard() {
    frmEditFacility().WardDescription.clear();
    cancel();
  }

  QLineEdit* TxtDescription;
};

}  // namespace

const Form& frmEditWard() { return formOf<WardEditor>(); }

}  // namespace bw
