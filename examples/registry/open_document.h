#ifndef ZELUTIL_EXAMPLES_REGISTRY_OPEN_DOCUMENT_H
#define ZELUTIL_EXAMPLES_REGISTRY_OPEN_DOCUMENT_H

#include <zelutil/util/registry.h>

/// All that the host and its plug-ins agree on: what a document answers, and the name of the slot where the one the
/// user works on is found.
class OpenDocument : public ZelU::Registry::IValue {
public:
    virtual const char* title() const = 0;
    virtual int netCount() const = 0;
};

inline constexpr char kOpenDocument[] = "open document";

/// A shortcut with the type of its values. Each module declares one of its own, as a static object: it must be there
/// before the first look into the registry.
class OpenDocumentShortcut : public ZelU::Registry::ShortcutBase {
public:
    using ShortcutBase::ShortcutBase;

    /// The document that was opened last, or null.
    OpenDocument* get() const { return static_cast<OpenDocument*>(ShortcutBase::get(false)); }

    /// Shows `document` to all modules until it is destroyed.
    void lend(OpenDocument& document) const { ShortcutBase::set(document); }
};

#endif
