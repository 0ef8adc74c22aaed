// The host: it lends its documents to the registry, and hands none to the plug-in.
#include <cstdio>

#include "net_report.h"
#include "open_document.h"

namespace {

const OpenDocumentShortcut openDocument(kOpenDocument);

class Document : public OpenDocument {
public:
    Document(const char* title, int netCount) : title_(title), netCount_(netCount) { openDocument.lend(*this); }

    // A copy would not be in the registry.
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    const char* title() const override { return title_; }
    int netCount() const override { return netCount_; }

private:
    const char* title_;
    int netCount_;
};

void editBlock() {
    std::puts("  the user goes into a block of the board");
    const Document block("power_stage.blk", 17);
    reportNets();
}

void editBoard() {
    std::puts("  the user opens a board");
    const Document board("router_main.brd", 412);
    reportNets();
    editBlock();
    std::puts("  the block is closed, the board is on top again");
    reportNets();
}

}  // namespace

int main() {
    std::puts("A value shared by two modules");
    std::puts("  before anything is open");
    reportNets();
    editBoard();
    std::puts("  the board is closed");
    reportNets();
    return 0;
}
