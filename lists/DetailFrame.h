#pragma once

#include <QGroupBox>
#include <functional>

namespace bw {

class WorkingList;

// What tells the frame of one kind of details from another.
struct DetailFrame {
  const char* title;
  const char* addTip;
  const char* delTip;
  const char* empty;  // what the list says without rows
  // Names of the controls, and the captions, whose letters differ where a dialog has two frames.
  const char* name = "Frame1";
  const char* list = "ListView1";
  const char* addName = "Command1";
  const char* addText = "&add";
  const char* delName = "Command2";
  const char* delText = "&del";
};

// The frame of a record's details: their list and the buttons that add to it and take from it, as
// the keys Insert and Delete do in the list.
QGroupBox* makeDetailFrame(const DetailFrame& frame, WorkingList& details, QWidget* parent,
                           std::function<void()> add);

}  // namespace bw
