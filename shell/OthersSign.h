#pragma once

#include <QToolButton>
#include <functional>
#include <set>
#include <string>

#include "engine/Engine.h"

class QToolBar;

namespace bw {

// A sign at the right end of the toolbar's row, on show when another station has changed what the
// list shows since it was read; of a file it is known only that something has changed. The list
// stays as it is; the sign's click and F5 read it anew. It looks every few seconds, and what it
// looks at costs no trip to a server.
class OthersSign : public QToolButton {
 public:
  OthersSign(QToolBar* bar, std::function<void()> readAnew);

  // From here on a change of one of these tables counts, none for no list. What is returned goes
  // back to what counted before, and to what was seen of it until then.
  std::function<void()> watch(std::set<std::string> tables);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void look();
  bool counts(const ChangesOfOthers& changes) const;
  void tell();
  void place();

  QToolBar* bar_;
  std::set<std::string> tables_;  // in small letters
};

}  // namespace bw
