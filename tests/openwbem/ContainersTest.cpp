// Array, Enumeration and the counted pointers.

#include "OW_Array.hpp"
#include "OW_COWReference.hpp"
#include "OW_Enumeration.hpp"
#include "OW_IntrusiveCountableBase.hpp"
#include "OW_IntrusiveReference.hpp"
#include "OW_Reference.hpp"
#include "OW_SharedLibraryReference.hpp"
#include "OW_String.hpp"
#include "Thrown.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

using namespace OpenWBEM;

namespace {

UInt32Array numbers(std::initializer_list<UInt32> list) {
    return UInt32Array(list.begin(), list.end());
}

TEST(Array, isMadeInEveryWay) {
    EXPECT_EQ(UInt32Array(), numbers({}));
    EXPECT_EQ(UInt32Array(2), numbers({0, 0}));
    EXPECT_EQ(UInt32Array(2, 7U), numbers({7, 7}));
    EXPECT_EQ(UInt32Array(2L, 7U), numbers({7, 7}));
    EXPECT_EQ(UInt32Array(size_t(2), 7U), numbers({7, 7}));
    EXPECT_EQ(UInt8Array(2, 7), UInt8Array(2, UInt8(7)));
    EXPECT_EQ(UInt32Array(new std::vector<UInt32>(2, 7)), numbers({7, 7}));
}

TEST(Array, copiesAreIndependent) {
    using Change = void (*)(UInt32Array&);
    const struct {
        Change change;
        UInt32Array result;
    } cases[] = {
        {[](UInt32Array& a) { a[0] = 9; }, numbers({9, 2, 3})},
        {[](UInt32Array& a) { *a.begin() = 9; }, numbers({9, 2, 3})},
        {[](UInt32Array& a) { a.front() = a.back(); }, numbers({3, 2, 3})},
        {[](UInt32Array& a) { a += 4; }, numbers({1, 2, 3, 4})},
        {[](UInt32Array& a) { a.append(4); }, numbers({1, 2, 3, 4})},
        {[](UInt32Array& a) { a.appendArray(a); }, numbers({1, 2, 3, 1, 2, 3})},
        {[](UInt32Array& a) { a.insert(size_t(1), 9); }, numbers({1, 9, 2, 3})},
        {[](UInt32Array& a) { a.insert(size_t(3), 9); }, numbers({1, 2, 3, 9})},
        {[](UInt32Array& a) { a.insert(a.end(), 9); }, numbers({1, 2, 3, 9})},
        {[](UInt32Array& a) { a.remove(1); }, numbers({1, 3})},
        {[](UInt32Array& a) { a.remove(0, 2); }, numbers({3})},
        {[](UInt32Array& a) { a.erase(a.begin()); }, numbers({2, 3})},
        {[](UInt32Array& a) { a.pop_back(); }, numbers({1, 2})},
        {[](UInt32Array& a) { a.resize(4, 9); }, numbers({1, 2, 3, 9})},
        {[](UInt32Array& a) { a.clear(); }, numbers({})},
    };
    for (size_t i = 0; i < sizeof(cases) / sizeof(cases[0]); ++i) {
        const UInt32Array original = numbers({1, 2, 3});
        UInt32Array copy(original);
        cases[i].change(copy);
        EXPECT_EQ(copy, cases[i].result) << i;
        EXPECT_EQ(original, numbers({1, 2, 3})) << i;
    }
}

TEST(Array, refusesIndicesBeyondItsEnd) {
    UInt32Array a = numbers({1, 2, 3});
    const UInt32Array& readOnly = a;
    const std::string refusal = "OutOfBoundsException: Array Index out of bounds. size = 3, index = ";
    EXPECT_EQ(thrownBy([&] { a[5] = 1; }), refusal + "5");
    EXPECT_EQ(thrownBy([&] { static_cast<void>(readOnly[3]); }), refusal + "3");
    EXPECT_EQ(thrownBy([&] { a.remove(3); }), refusal + "3");
    EXPECT_EQ(thrownBy([&] { a.remove(1, 4); }), refusal + "4");
    EXPECT_EQ(thrownBy([&] { a.remove(2, 1); }), refusal + "2");
    EXPECT_EQ(thrownBy([&] { a.insert(size_t(4), 1); }), refusal + "4");
    EXPECT_EQ(readOnly, numbers({1, 2, 3}));
}

TEST(Array, ordersByItsElements) {
    EXPECT_TRUE(numbers({1, 2}) < numbers({1, 3}) && numbers({1}) < numbers({1, 0}) && numbers({}) < numbers({0}));
    EXPECT_FALSE(numbers({2}) < numbers({1, 9}) || numbers({1}) < numbers({1}));
    EXPECT_TRUE(numbers({1, 2}) != numbers({1}) && numbers({2}) >= numbers({1, 9}));
}

TEST(Enumeration, handsElementsOutInOrder) {
    Enumeration<String> names;
    names.addElement("a");
    names.addElement("b");
    EXPECT_EQ(names.nextElement(), "a");
    String second;
    names.nextElement(second);
    EXPECT_EQ(second, "b");
    EXPECT_FALSE(names.hasMoreElements());
    EXPECT_EQ(thrownBy([&] { names.nextElement(); }), "EnumerationException: The enumeration has no more elements");
}

// Counts the living objects, so that a leak or a double deletion shows.
struct Counted : public virtual IntrusiveCountableBase {
    static std::atomic<int> living;
    Counted() { ++living; }
    Counted(const Counted& arg) : IntrusiveCountableBase(arg), value(arg.value) { ++living; }
    ~Counted() override { --living; }
    virtual Counted* clone() const { return new Counted(*this); }
    int value = 0;
};
std::atomic<int> Counted::living(0);
struct Special : public Counted {};

template <class Ref, class SpecialRef>
void expectSharedOwnership() {
    {
        Ref first(new Special);
        const Ref second(first);
        EXPECT_TRUE(first == second && first && !!second && !Ref());
        Ref third;
        third = first;
        EXPECT_TRUE(first.template cast_to<Special>());
        const Ref plain(new Counted);
        EXPECT_FALSE(plain.template cast_to<Special>());
        const Ref widened = SpecialRef(new Special);
        Ref moved(std::move(first));
        EXPECT_TRUE(!first && moved == second);
        third = third.getPtr() ? third : Ref();
        EXPECT_EQ(Counted::living, 3);
    }
    EXPECT_EQ(Counted::living, 0);
}

TEST(References, shareOwnership) {
    expectSharedOwnership<IntrusiveReference<Counted>, IntrusiveReference<Special>>();
    expectSharedOwnership<Reference<Counted>, Reference<Special>>();
    expectSharedOwnership<COWReference<Counted>, COWReference<Special>>();
    EXPECT_EQ(thrownBy([] { Reference<Counted>()->value = 1; }), "NULLReferenceException: NULL Reference dereferenced");
    EXPECT_EQ(thrownBy([] { COWReference<Counted>()->value = 1; }),
              "NULLReferenceException: NULL Reference dereferenced");
}

TEST(References, takeOverACountAndCompareWithPointers) {
    Counted* object = new Counted;
    IntrusiveReferenceAddRef(object);
    {
        const IntrusiveReference<Counted> owner(object, false);
        EXPECT_TRUE(owner == object && object == owner && owner != static_cast<Counted*>(nullptr));
        EXPECT_EQ(Counted::living, 1);
    }
    EXPECT_EQ(Counted::living, 0);
}

TEST(COWReference, copiesBeforeAWrite) {
    COWReference<Counted> first(new Counted);
    COWReference<Counted> second(first);
    const COWReference<Counted>& reader = second;
    EXPECT_EQ(reader->value, 0);
    EXPECT_EQ(Counted::living, 1);
    second->value = 5;
    EXPECT_EQ(Counted::living, 2);
    EXPECT_EQ((*static_cast<const COWReference<Counted>&>(first)).value, 0);
    COWReference<std::vector<int>> list(new std::vector<int>(2));
    const COWReference<std::vector<int>> copy(list);
    list->push_back(1);
    EXPECT_EQ(copy->size(), 2U);
}

TEST(References, countAcrossThreads) {
    const IntrusiveReference<Counted> shared(new Counted);
    const String text("shared by all");
    const StringArray array(3, text);
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&] {
            for (int i = 0; i < 2000; ++i) {
                const IntrusiveReference<Counted> mine(shared);
                StringArray copy(array);
                copy[1] += "!";
                ASSERT_EQ(copy[1].length(), text.length() + 1);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(array[1], text);
    EXPECT_EQ(Counted::living, 1);
}

// Tells in which order it and the library are released.
std::string released;
struct FakeLibrary : public SharedLibrary {
    ~FakeLibrary() override { released += "library "; }
    bool doGetFunctionPointer(const String&, void**) const override { return false; }
};
struct InLibrary : public Counted {
    ~InLibrary() override { released += "object "; }
};

TEST(SharedLibraryReference, releasesTheLibraryAfterTheObject) {
    typedef SharedLibraryReference<IntrusiveReference<InLibrary>> Ref;
    released.clear();
    {
        Ref first(SharedLibraryRef(new FakeLibrary), new InLibrary);
        const SharedLibraryReference<IntrusiveReference<Counted>> base(first);
        EXPECT_TRUE(base.cast_to<IntrusiveReference<InLibrary>>());
        EXPECT_FALSE(base.cast_to<IntrusiveReference<Special>>());
        first.setNull();
        EXPECT_TRUE(!first && base);
        EXPECT_EQ(released, "");
    }
    EXPECT_EQ(released, "object library ");
    released.clear();
    Ref replaced(SharedLibraryRef(new FakeLibrary), new InLibrary);
    replaced = Ref(SharedLibraryRef(), new InLibrary);
    EXPECT_EQ(released, "object library ");
}

} // namespace
