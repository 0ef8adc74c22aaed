#ifndef ZELUTIL_TESTS_SUPPORT_VIRTUAL_FUNCTION_H
#define ZELUTIL_TESTS_SUPPORT_VIRTUAL_FUNCTION_H

#include <cstring>

namespace zelutil::test {

/// Entry `slot` of the object's table of virtual functions, where a program finds it that was compiled earlier. As a
/// plain function it takes the object as its first argument. A virtual destructor takes two entries (gcc's and clang's
/// tables, on both systems).
template <typename Function>
Function virtualFunction(const void* object, int slot) {
    const void* const* table = nullptr;
    std::memcpy(&table, object, sizeof table);
    Function function = nullptr;
    std::memcpy(&function, table + slot, sizeof function);
    return function;
}

}  // namespace zelutil::test

#endif
