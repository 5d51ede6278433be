// The order of virtual functions, which callers that were compiled against the headers rely on.
#pragma once

#include <cstddef>
#include <cstring>
#include <gtest/gtest.h>
#include <numeric>
#include <typeinfo>
#include <vector>

/// The slot of a virtual function in its class's primary table, which begins with two for the destructor. A member
/// pointer is the slot's offset in bytes and what to add to `this`; the least bit of the first says that the function
/// is virtual (Itanium C++ ABI), or that of the second, which is then doubled (ARM's).
template <class Member>
std::size_t slot(Member member) {
    std::size_t pointer[2];
    static_assert(sizeof member == sizeof pointer);
    std::memcpy(pointer, &member, sizeof pointer);
#if defined(__arm__) || defined(__aarch64__)
    pointer[0] += pointer[1] & 1U;
    pointer[1] >>= 1U;
#endif
    EXPECT_EQ(pointer[0] & 1U, 1U) << "not virtual";
    EXPECT_EQ(pointer[1], 0U) << "not in the primary table";
    return pointer[0] / sizeof(void*);
}

template <class Class, class Member>
const char* classOf(Member Class::* /*member*/) {
    return typeid(Class).name();
}

/// The members have successive slots. A failure names the class of the last, which is not one of a base.
template <class... Members>
void expectSlotsFrom(std::size_t first, Members... members) {
    std::vector<std::size_t> expected(sizeof...(members));
    std::iota(expected.begin(), expected.end(), first);
    EXPECT_EQ((std::vector<std::size_t>{slot(members)...}), expected) << (classOf(members), ...);
}
