// Modifications, creation, deletion and methods: what is handed to the provider and what is refused before.
#include "tests/cimserver/cimom/Fixture.hpp"

using testing::ElementsAre;
using testing::Pair;

namespace cimserver::cimom {
namespace {

class Modify : public CimomTest {
  protected:
    /// What the provider is handed for these properties ("" when it is not called).
    std::string modify(const CIMPropertyArray& properties, const StringArray* list = nullptr) {
        CIMInstance modified("T_Thing");
        modified.setProperties(properties);
        record.calls.clear();
        use->modifyInstance(context, "root/test", path(), modified, WBEMFlags::E_INCLUDE_QUALIFIERS, list);
        EXPECT_EQ(record.calls.at(0), "get root/test /root/test:T_Thing.Name=\"one\" all");
        return record.calls.size() > 1 ? record.calls[1] : "";
    }

    static CIMPropertyArray all(int a, const char* b) {
        return listOf({text("b", b), CIMProperty(CIMName("A"), CIMValue(UInt8(a))), text("Name", "one"),
                       CIMProperty(CIMName("C"), CIMDataType(CIMDataType::UINT16, -1))});
    }

    Cimom* use = &cimom;
};

TEST_F(Modify, HandsOnWhatDiffersInTheOrderOfTheRequest) {
    EXPECT_EQ(modify(all(5, "old")), "") << "nothing differs, C could not be read and is sent as NULL";
    EXPECT_EQ(modify(all(6, "old")), "modify Name=one A=6 [A] of /root/test:T_Thing.Name=\"one\"");
    EXPECT_EQ(modify(all(6, "new")), "modify Name=one B=new A=6 [B,A] of /root/test:T_Thing.Name=\"one\"");
    EXPECT_TRUE(record.handed.getProperty(CIMName("B")).getOriginClass().equals("T_Thing")) << "the class's property";
    const CIMDataType null = CIMDataType::STRING; // of a key it says nothing
    EXPECT_EQ(modify(listOf({CIMProperty(CIMName("B"), null), CIMProperty(CIMName("Name"), null)})),
              "modify Name=one B=(null) [B] of /root/test:T_Thing.Name=\"one\"")
        << "NULL, not the default";
}

TEST_F(Modify, ComparesInTheTypeOfTheClass) {
    record.present.setProperty(CIMProperty(CIMName("A"), CIMValue(Int32(5)))); // as careless providers deliver
    EXPECT_EQ(modify(all(5, "old")), "");
    record.present.setProperty(CIMProperty(CIMName("A"), CIMValue("five")));
    EXPECT_EQ(modify(all(5, "old")), "modify Name=one A=5 [A] of /root/test:T_Thing.Name=\"one\"");
}

TEST_F(Modify, HandsOnWhatTheListNames) {
    StringArray list(1, String("a"));
    EXPECT_EQ(modify(all(5, "new"), &list), "modify Name=one A=5 [A] of /root/test:T_Thing.Name=\"one\"");
    list.push_back("B");
    CIMPropertyArray only(1, CIMProperty(CIMName("A"), CIMValue(UInt8(9))));
    EXPECT_EQ(modify(only, &list), "modify Name=one A=9 B=default [A,B] of /root/test:T_Thing.Name=\"one\"")
        << "named but not sent: its default";
    const StringArray none;
    EXPECT_EQ(modify(all(6, "new"), &none), "");
}

/// Writes down what it is told.
struct Follower : ChangeObserver {
    void onModification(const CIMPropertyArray& changes, const CIMInstance& before) override {
        told += "[" + shown(changes) + " was " + before.getPropertyValue("A").toString().c_str() + "]";
    }
    void beforeChange() override {
        if (refusing) {
            throw CimError(Status::Failed, "refused");
        }
        told += "!";
    }
    void afterModification(const CIMInstance& present) override {
        told += std::string("[is ") + present.getPropertyValue("A").toString().c_str() + "]";
    }
    std::string told;
    bool refusing = false;
};

TEST_F(Modify, ShowsTheObserverOnlyItsOwnChanges) {
    Follower follower;
    context.observer = &follower;
    record.beforeReply = [&] {
        record.beforeReply = nullptr;
        CIMInstance other(record.present);
        record.env->getCIMOMHandle()->modifyInstance("root/test", other.setProperty(text("B", "by the provider")));
    };
    modify(all(6, "old"));
    EXPECT_EQ(follower.told, "[A=6 was 5]![is 5]") << "the recorder does not keep what it is handed";
    follower.told.clear();
    modify(all(5, "old"));
    EXPECT_EQ(follower.told, "[ was 5]");
}

TEST_F(Modify, AnObserverCanPreventEachKindOfChange) {
    Follower follower;
    context.observer = &follower;
    follower.refusing = true;
    const CIMInstance thing(record.present);
    const auto refused = Pair(1, "general error (refused)");
    EXPECT_THAT(thrownBy([&] { modify(all(6, "old")); }), refused);
    EXPECT_THAT(thrownBy([&] { cimom.createInstance(context, "root/test", thing); }), refused);
    EXPECT_THAT(thrownBy([&] { cimom.deleteInstance(context, "root/test", path()); }), refused);
    const auto in = [](const CIMMethod&) {
        return CIMParamValueArray(1, CIMParamValue(CIMName("Level"), CIMValue(UInt8(1))));
    };
    CIMParamValueArray out;
    EXPECT_THAT(thrownBy([&] { cimom.invokeMethod(context, "root/test", path(), "Act", in, out); }), refused);
    EXPECT_THAT(record.calls, testing::Each(testing::StartsWith("get ")));
}

TEST_F(Modify, ForwardsUnchangedPropertiesOnRequest) {
    Cimom forwarding(repository, host, {true});
    use = &forwarding;
    EXPECT_EQ(modify(all(5, "old")), "modify Name=one B=old A=5 C=(null) [B,A,C] of "
                                     "/root/test:T_Thing.Name=\"one\"");
}

TEST_F(Modify, RefusesUnknownPropertiesBeforeTheProviderIsAsked) {
    const auto modifyWith = [&](const CIMProperty& property, const StringArray* list = nullptr) {
        return thrownBy([&] { modify(CIMPropertyArray(1, property), list); });
    };
    const StringArray list(1, String("Bea"));
    EXPECT_THAT(modifyWith(text("Bee", "x")), Pair(12, "specified property does not exist (Bee)"));
    EXPECT_THAT(modifyWith(text("B", "x"), &list), Pair(12, "specified property does not exist (Bea)"));
    EXPECT_THAT(record.calls, ElementsAre());
    EXPECT_THAT(modifyWith(text("Name", "two")).second, testing::HasSubstr("key property Name cannot be"));
    EXPECT_EQ(record.calls.size(), 1u) << "read, but not modified";
    record.beforeReply = [] { OW_THROWCIMMSG(CIMException::NOT_FOUND, "gone"); };
    EXPECT_THAT(modifyWith(text("B", "x")), Pair(6, "requested object could not be found (gone)"));
    EXPECT_EQ(record.calls.size(), 1u) << "an instance that is not there is not modified";
}

TEST_F(CimomTest, CreatesAndDeletes) {
    CIMInstance fresh("T_Thing");
    fresh.setProperty(text("name", "new"));
    EXPECT_EQ(cimom.createInstance(context, "root/test", fresh).toString(), String("/root/test:T_Thing.Name=\"new\""))
        << "the name is made of the instance when the provider gives none";
    EXPECT_THAT(record.calls, ElementsAre("create Name=new A=(null) B=default C=(null)"));
    record.created = path("T_Thing", "other");
    EXPECT_EQ(cimom.createInstance(context, "root/test", fresh).getKeyValue(CIMName("Name")).toString(),
              String("other"));
    record.calls.clear();
    cimom.deleteInstance(context, "root/test", path());
    EXPECT_THAT(record.calls, ElementsAre("get root/test /root/test:T_Thing.Name=\"one\" all",
                                          "delete /root/test:T_Thing.Name=\"one\""));
    EXPECT_THAT(thrownBy([&] { cimom.createInstance(context, "root/test", CIMInstance("T_Idea")); }),
                Pair(4, "invalid parameter passed to method (The class T_Idea is abstract)"));
}

class Invoke : public CimomTest {
  protected:
    static CIMParamValue value(const char* name, const CIMValue& v) { return {CIMName(name), v}; }

    std::pair<int, std::string> invoke(const CIMParamValueArray& in) {
        const auto reader = [&](const CIMMethod&) { return in; };
        return thrownBy([&] { cimom.invokeMethod(context, "root/test", path("t_thing"), "act", reader, out); });
    }

    CIMParamValueArray out;
};

TEST_F(Invoke, OrdersTypesAndCompletesParameters) {
    const CIMParamValueArray in = listOf({value("BOTH", CIMValue("b")), value("Level", CIMValue("3"))});
    record.out = listOf({value("", CIMValue("changed")), value("", CIMValue(UInt8(9)))});
    EXPECT_EQ(invoke(in).first, 0);
    EXPECT_THAT(record.calls, ElementsAre("get root/test /root/test:t_thing.Name=\"one\" all",
                                          "invoke act /root/test:t_thing.Name=\"one\""));
    ASSERT_EQ(record.in.size(), 3u);
    EXPECT_EQ(record.in[0].getValue().toUInt8(), 3) << "cast to the declared type";
    EXPECT_EQ(record.in[1].getName(), String("Note"));
    EXPECT_FALSE(record.in[1].getValue()) << "missing, so NULL";
    EXPECT_EQ(record.in[2].getName(), String("BOTH")) << "spelled as the client did";
    ASSERT_EQ(out.size(), 2u);
    EXPECT_EQ(out[0].getName(), String("Both"));
    EXPECT_EQ(out[0].getValue().toString(), String("changed"));
    EXPECT_EQ(out[1].getValue().toUInt16(), 9) << "cast to the declared type";
    record.out.clear();
    EXPECT_EQ(invoke(in).first, 0);
    EXPECT_EQ(out[0].getValue().toString(), String("b")) << "comes preset with what was sent";
    EXPECT_FALSE(out[1].getValue());
    record.out = listOf({value("", CIMValue("x")), value("", CIMValue(UInt32(70000)))});
    EXPECT_THAT(invoke(in), Pair(1, "general error (The value of parameter Result cannot be converted to uint16)"));
}

TEST_F(Invoke, RefusesWhatTheMethodDoesNotTake) {
    for (const char* name : {"Zap", "level", "Result"}) { // unknown, a second time, out only
        const auto in = listOf({value("Level", CIMValue(UInt8(1))), value(name, CIMValue("x"))});
        EXPECT_THAT(invoke(in).second, testing::HasSubstr(std::string("Unknown or duplicate parameter: ") + name));
    }
    EXPECT_EQ(invoke(CIMParamValueArray(1, value("Level", CIMValue("abc")))).first, 4);
    EXPECT_EQ(invoke(CIMParamValueArray(1, value("Level", CIMValue(CIMNULL)))).first, 0) << "NULL is a value given";
    EXPECT_EQ(record.calls.size(), 6u) << "five reads and one call";
}

} // namespace
} // namespace cimserver::cimom
