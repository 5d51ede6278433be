// Array, Enumeration and the counted pointers.

#include "LibraryTest.hpp"
#include "OW_COWReference.hpp"
#include "OW_Reference.hpp"
#include "OW_SharedLibraryReference.hpp"

#include <atomic>
#include <cstdio>
#include <fstream>
#include <thread>
#include <vector>

using namespace OpenWBEM;

namespace {

UInt32Array numbers(std::initializer_list<UInt32> list) {
    return UInt32Array(list.begin(), list.end());
}

TEST(Array, copiesAreIndependent) {
    using Change = void (*)(UInt32Array&);
    const std::pair<Change, UInt32Array> cases[] = {
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
        {[](UInt32Array& a) { a.clear(); }, numbers({})}};
    for (const auto& [change, result] : cases) {
        const UInt32Array original = numbers({1, 2, 3});
        UInt32Array copy(original);
        change(copy);
        EXPECT_EQ(copy, result);
        EXPECT_EQ(original, numbers({1, 2, 3}));
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

TEST(Enumeration, handsElementsOutInOrder) {
    Enumeration<String> names;
    names.addElement("a");
    names.addElement("b");
    EXPECT_EQ(names.nextElement(), "a");
    String second;
    names.nextElement(second);
    EXPECT_EQ(second, "b");
    EXPECT_FALSE(names.hasMoreElements());
    EXPECT_EQ(thrownBy([&] { names.nextElement(); }), "EnumerationException: Attempt to Extract from empty Enum");
    Enumeration<String> copy(names);
    copy.addElement("shared");
    EXPECT_EQ(names.numberOfElements(), 1U);
    *Enumeration_inserter(names)++ = "x";
    std::string all;
    const Enumeration_input_iterator<String> end;
    for (Enumeration_input_iterator<String> i(names); i != end; ++i) {
        all += std::string(i->c_str()) + ";";
    }
    EXPECT_EQ(all, "shared;x;");
    EXPECT_FALSE(copy.hasMoreElements());
}

TEST(Enumeration, movesToAFileAndBack) {
    Enumeration<String> many;
    for (int i = 0; i < 20000; ++i) {
        EXPECT_FALSE(i == 10 && many.usingTempFile());
        many.addElement("0123456789");
        if (i % 1000 == 999) {
            EXPECT_EQ(many.nextElement(), "0123456789"); // taking and adding in turn
        }
    }
    EXPECT_TRUE(many.usingTempFile());
    EXPECT_EQ(many.numberOfElements(), 19980U);
    many.clear();
    EXPECT_FALSE(many.hasMoreElements() || many.usingTempFile());
    for (const char* name : {"a", "b", "c"}) {
        many.addElement(name);
    }
    EXPECT_EQ(many.nextElement(), "a");
    const String file = many.releaseFile();
    EXPECT_FALSE(many.hasMoreElements());
    Enumeration<String> opened(file);
    EXPECT_TRUE(opened.usingTempFile());
    EXPECT_EQ(opened.numberOfElements(), 2U);
    EXPECT_EQ(opened.nextElement(), "a") << "the file begins with the first element ever added";
    opened.addElement("d");
    EXPECT_EQ(opened.nextElement(), "b");
    EXPECT_EQ(thrownBy([&] { Enumeration<String> again(file); }), "EnumerationException: Failed to open file");
}

TEST(Enumeration, refusesADamagedFile) {
    Enumeration<String> names;
    names.addElement("a");
    const String file = names.releaseFile();
    std::fstream stream(file.c_str(), std::ios::in | std::ios::out);
    stream.seekp(6); // into the number of elements
    stream.put('\x7F');
    stream.close();
    EXPECT_EQ(thrownBy([&] { Enumeration<String> opened(file); }), "EnumerationException: Failed to read file");
    EXPECT_EQ(std::remove(file.c_str()), 0) << "a file that is none of ours stays";
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
              "NULLCOWReferenceException: NULL COWReference dereferenced");
    EXPECT_EQ(NULLCOWReferenceException("f", 1, "m").getSubClassId(), 16);
    {
        Counted* object = new Counted;
        const Reference<Counted> first(object);
        Reference<Counted> second(object);
        second.useRefCountOf(first);
        EXPECT_EQ(Counted::living, 1);
    }
    EXPECT_EQ(Counted::living, 0);
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

// As a provider's own class: clone() need not be const.
struct Shared : public COWIntrusiveCountableBase {
    Shared* clone() { return new Shared(*this); }
    int owners() const { return getRefCount().get(); }
    int value = 0;
};

TEST(COWIntrusiveReference, copiesBeforeAWrite) {
    const RefCount fresh;
    EXPECT_EQ(fresh.get(), 1);
    COWIntrusiveReference<Shared> first = new Shared;
    const COWIntrusiveReference<Shared> second(first);
    EXPECT_TRUE(first == second && first.getPtr() == second && second == second.getPtr());
    EXPECT_EQ(second->owners(), 2);
    first->value = 1;
    EXPECT_TRUE(first != second && first != second.getPtr());
    EXPECT_EQ(second->value, 0);
    EXPECT_EQ(second->owners(), 1);
    first = 0;
    EXPECT_TRUE(!first);
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
