#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "records/RecordSet.h"

namespace bw {

// Documents for the viewer: text files of positioned items, an item a line, in Windows-1252, with
// CR and LF. Coordinates are given in inches and written in twips. A line break in a text becomes a
// blank; everything else is written as found, since the text is the last field of its line.
//
// One document is open at a time, and the routines below write to it; without one they raise 91.
class ViewerDocument {
 public:
  // Makes the folder when it is missing. Folder and document are the user's alone.
  // A document that cannot be written raises error 76 with a sentence, here and later.
  ViewerDocument(const std::filesystem::path& file, double width, double height);
  ViewerDocument(const ViewerDocument&) = delete;
  ViewerDocument& operator=(const ViewerDocument&) = delete;
  ~ViewerDocument();  // a document that was not closed leaves the one before in its place

  void close();
};

// Alignments across, and in the height of the box.
inline constexpr std::int16_t kLeft = 0;
inline constexpr std::int16_t kCentre = 1;
inline constexpr std::int16_t kRight = 2;
inline constexpr std::int16_t kTop = 0;
inline constexpr std::int16_t kMiddle = 1;
inline constexpr std::int16_t kBottom = 2;

inline constexpr std::int32_t RGB(int red, int green, int blue) {
  return red + 256 * green + 65536 * blue;
}
inline constexpr std::int32_t kBlack = RGB(0, 0, 0);
inline constexpr std::int32_t kWhite = RGB(255, 255, 255);
inline constexpr std::int32_t kGrey = RGB(196, 196, 196);

// `flag` is the viewer's: false on the small captions of the detailed report alone.
void ViewerText(std::int32_t page, double x, double y, double w, double h, std::int16_t align,
                std::int16_t valign, std::int32_t colour, std::int16_t size, bool bold, bool flag,
                std::string_view text);
// The viewer replaces "#TotalPaginas" in the text by the number of pages.
void ViewerPageTotalText(std::int32_t page, double x, double y, double w, double h,
                         std::int16_t align, std::int16_t valign, std::int32_t colour,
                         std::int16_t size, bool bold, bool flag, std::string_view text);
// A rectangle; the first colour is its outline, the second its inside.
void ViewerShape(std::int32_t page, double x, double y, double w, double h, double lineWidth,
                 std::int32_t secondColour, std::int32_t firstColour);

// The head of a page. `subtitles` is a list of lines, each closed by ";". Moves `y` down to the end
// of the head when it is above it. The date and the time are those of the moment.
void ViewerPageHeader(const std::string& headerLine, const std::string& title,
                      std::string subtitles, std::int32_t page, double& y);
void ViewerFooterBar(std::int32_t page, double y, double w);

// Tables: `columns` is a list of entries closed by ";", each a name, a comma and a width in inches
// (0 when it is missing); it ends at the first empty entry. In heads the name is the caption.
void ViewerColumnHeads(double xStart, double y, double h, double lineWidth,
                       std::int32_t firstColour, std::int32_t secondColour, std::int32_t textColour,
                       std::int16_t size, double margin, std::string columns, std::int32_t page);
// In rows it is a field of the record set, whose current record is written; an unknown one raises
// 3265. No value prints as empty. Records are read ahead: while a table is written they stay as
// they are, but for an edit that is pending on the current one.
void ViewerRowCells(const RecordSetRef& recordset, double xStart, double y, double h,
                    std::int32_t textColour, std::int16_t size, double margin,
                    const std::string& columns, std::int32_t page);

}  // namespace bw
