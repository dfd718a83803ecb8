#pragma once

#include <QMainWindow>
#include <cstdint>
#include <string_view>

namespace bw {

// What the views and the tree need of the main window; MainWindow is one.
class MainFrame : public QMainWindow {
 public:
  std::int16_t VistaActualNumero = -1;   // -1 until the first switch
  std::int16_t FiltroActualNumero = -1;  // -1 until the first switch

  // Makes that view and filter current. The same ones again only repaint.
  virtual void CambiaAVista(std::int16_t Vista, std::int16_t Filtro) = 0;
  // Moves the check mark of the Current View menu; neither number changes.
  virtual void ActivaFiltro(std::int16_t NuevoFiltro) = 0;
  // What the toolbar's button of that key does ("Nuevo", "Eliminar"); like it, it passes over every
  // error.
  virtual void pressButton(std::string_view key) = 0;

  // The list of the view on show is about to be read by that statement. What is returned says that
  // it was not, and stays on show as it was.
  virtual std::function<void()> readsList(std::string_view statement) = 0;

  // Where tree and views live.
  QWidget* clientArea() const { return client_; }

 protected:
  MainFrame() : client_(new QWidget(this)) {}

  QWidget* client_;
};

}  // namespace bw
