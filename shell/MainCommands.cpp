
#include "charges/frmArchiveCharges.h"
#include "core/PassOver.h"
#include "core/Principal.h"
#include "core/Services.h"
#include "printing/PageSize.h"
#include "shell/frmAbout.h"
#include "shell/frmMain.h"
#include "shell/frmShorcuts.h"
#include "text/RuntimeError.h"

// What the main window's menu entries and buttons do.

namespace bw {
void frmMain::callView(std::string_view operation, std::string_view argument) {
  if (activeView_ == nullptr) throw RuntimeError(ErrorNumber::objectNotSet);
  activeView_->call(operation, argument);
}

void frmMain::chooseFilter(std::int16_t filter) {
  if (filter != FiltroActualNumero) frmShorcuts().FuerzaNodeClick(VistaActualNumero, filter);
}

void frmMain::chooseView(std::int16_t view) {
  if (view != VistaActualNumero) frmShorcuts().FuerzaNodeClick(view, 0);
  focusView();
}

void frmMain::focusView() {
  if (activeView_ != nullptr) activeView_->takeFocus();
}

void frmMain::toggleShortcuts() {
  const bool show = !frmShorcuts().isVisibleTo(client_);
  shortcutsShown_ = show ? 1 : 0;
  menus_.shortcuts()->setChecked(show);
  frmShorcuts().setVisible(show);
  menus_.goToMenu()->setVisible(!show);
  if (show && activeView_ != nullptr) activeView_->update();
  placeAll();
}

void frmMain::CerrarShortcut() {
  if (frmShorcuts().isVisibleTo(client_)) toggleShortcuts();
}

void frmMain::pageSetup() {
  passOver([this] { choosePageSize(this); });
}

void frmMain::newRecordDialog(int index) { openNew(recordKind(static_cast<std::int16_t>(index))); }

void frmMain::newFromToolbar() {
  newRecordDialog(VistaActualNumero);
  focusView();
  if (RecordSaved) callView("Insertado");
}

void frmMain::pressButton(std::string_view key) {
  passOver([&] {
    if (key == "Nuevo")
      newFromToolbar();
    else
      callView(key);
  });
}

void frmMain::newFromMenu(int index) {
  newRecordDialog(index);
  // The list would be brought up to date here if a mark that was never made said so: asking for it
  // is error 424, which ends the program. The record is stored by then.
  if (RecordSaved) throw RuntimeError(ErrorNumber::objectRequired);
}

void frmMain::archiveCharges() {
  frmArchiveCharges().showModal();
  focusView();
  callView("Refresca");
}

void frmMain::about() { frmAbout().showModal(); }

}  // namespace bw
