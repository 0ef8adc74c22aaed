#ifndef ZELUTIL_TESTS_SUPPORT_TYPED_SHORTCUT_H
#define ZELUTIL_TESTS_SUPPORT_TYPED_SHORTCUT_H

#include <zelutil/util/registry.h>

#include <functional>
#include <string>
#include <utility>

namespace zelutil::test {

/// A value as a host has them: it knows its name, and can tell of its end.
class Tool : public ZelU::Registry::IValue {
public:
    explicit Tool(std::string toolName, std::function<void()> atEnd = nullptr)
        : name(std::move(toolName)), atEnd_(std::move(atEnd)) {}
    Tool(const Tool&) = default;
    Tool& operator=(const Tool&) = default;
    ~Tool() override {
        if (atEnd_) {
            atEnd_();
        }
    }

    std::string name;

private:
    std::function<void()> atEnd_;
};

/// Makes what it is told to make, and counts.
class ToolFactory : public ZelU::Registry::IValueFactory {
public:
    explicit ToolFactory(std::function<Tool*()> make) : make_(std::move(make)) {}

    ZelU::Registry::IValue* Make() const override {
        ++calls;
        return make_();
    }

    mutable int calls = 0;

private:
    std::function<Tool*()> make_;
};

/// A shortcut with the type of its values, as a host derives it.
class ToolShortcut : public ZelU::Registry::ShortcutBase {
public:
    using ShortcutBase::ShortcutBase;

    /// The tool on top, or null.
    Tool* find() const { return static_cast<Tool*>(get(false)); }

    Tool& demand() const { return static_cast<Tool&>(*get(true)); }

    Tool& lend(Tool& tool) const { return static_cast<Tool&>(set(tool)); }

    Tool& install(const ToolFactory& factory) const { return static_cast<Tool&>(set(factory)); }
};

}  // namespace zelutil::test

#endif
