// The plug-in, a shared module: it uses the open document, whoever lent it.
#include "net_report.h"

#include <cstdio>

#include "open_document.h"

namespace {

const OpenDocumentShortcut openDocument(kOpenDocument);

}  // namespace

void reportNets() {
    const OpenDocument* const document = openDocument.get();
    if (document == nullptr) {
        std::puts("    report: no document is open");
        return;
    }
    std::printf("    report: %s has %d nets\n", document->title(), document->netCount());
}
