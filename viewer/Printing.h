#pragma once

#include <QString>
#include <vector>

#include "viewer/CsvExport.h"
#include "viewer/Document.h"

class QIODevice;
class QPrinter;

namespace bw {

// Chooses the paper that the document was laid out for, lying as its pages come on it.
void preparePrinter(QPrinter& printer, const Document& document, const QString& title);

// The pages that the print dialog left in the printer, each from 1 to the page count, in the order
// of printing.
std::vector<std::size_t> chosenPages(const QPrinter& printer, std::size_t pageCount,
                                     std::size_t currentPage);

enum class Outcome { done, stopped, failed };

// Prints the pages as they are laid out, from the corner of the paper; on another paper than theirs
// smaller, when it does not take what is drawn. Copies that the printer cannot make itself are
// printed here.
Outcome printPages(QPrinter& printer, const Document& document,
                   const std::vector<std::size_t>& pages, const Progress& progress);

// All pages on the document's paper, the text as text, its fonts embedded.
Outcome writePdf(QIODevice& device, const Document& document, const QString& title,
                 const Progress& progress);

}  // namespace bw
