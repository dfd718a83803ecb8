#pragma once

#include <QString>
#include <vector>

#include "viewer/CsvExport.h"
#include "viewer/Document.h"

class QIODevice;
class QPrinter;

namespace bw {

// Turns the paper as the document lies. The paper itself stays the printer's: the writer rounds it
// to whole inches, so a document's 8 by 11 inches mean Letter.
void preparePrinter(QPrinter& printer, const Document& document, const QString& title);

// The pages that the print dialog left in the printer, each from 1 to the page count, in the order
// of printing.
std::vector<std::size_t> chosenPages(const QPrinter& printer, std::size_t pageCount,
                                     std::size_t currentPage);

enum class Outcome { done, stopped, failed };

// Prints in true size from the corner of the paper; a document larger than the paper by more than
// the writer's rounding is made smaller to fit. Copies that the printer cannot make itself are
// printed here.
Outcome printPages(QPrinter& printer, const Document& document,
                   const std::vector<std::size_t>& pages, const Progress& progress);

// All pages in the document's own size, the text as text, its fonts embedded.
Outcome writePdf(QIODevice& device, const Document& document, const QString& title,
                 const Progress& progress);

}  // namespace bw
