#pragma once

#include <QString>

#include "viewer/Printing.h"

namespace bw {

// A name for files made of a document, without an ending: title, insurance, lot and date, as its
// first page tells them.
QString reportName(const Document& document);

// A document's pages as a PDF, its rows as a table. Either the whole file is written, readable by
// its owner alone, or what was there stays; a device, a pipe or a folder is never replaced.
// `reason` says why it failed.
Outcome savePdfFile(const QString& path, const Document& document, const QString& title,
                    const Progress& progress, QString& reason);
Outcome saveCsvFile(const QString& path, const Document& document, const Progress& progress,
                    QString& reason);

}  // namespace bw
