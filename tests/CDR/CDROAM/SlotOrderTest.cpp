// The order of the virtual functions, which callers that were compiled against the headers rely on.
#include "CDRProvider.hpp"
#include "QTX_CDRPullStatisticsProvider.hpp"
#include "QTX_CDRPushSettingImpl.hpp"
#include "QTX_CDRPushStatistics.hpp"
#include "QTX_CDRService.hpp"
#include "QTX_CDRServiceAccessBin.hpp"
#include "QTX_CDRServicePrefixBin.hpp"

#include <gmock/gmock.h>

#include <cstring>
#include <numeric>
#include <vector>

namespace {

// The slot of a virtual function: its member pointer holds 1 + the slot's offset in bytes (Itanium C++ ABI).
template <class Member>
int slot(Member member) {
    std::ptrdiff_t pointer[2];
    static_assert(sizeof member == sizeof pointer);
    std::memcpy(pointer, &member, sizeof pointer);
    EXPECT_EQ(pointer[0] & 1, 1) << "not virtual";
    EXPECT_EQ(pointer[1], 0) << "not in the primary table";
    return static_cast<int>(pointer[0] / static_cast<std::ptrdiff_t>(sizeof(void*)));
}

// The members have successive slots.
template <class... Members>
void expectSlotsFrom(int first, Members... members) {
    std::vector<int> expected(sizeof...(members));
    std::iota(expected.begin(), expected.end(), first);
    EXPECT_EQ((std::vector<int>{slot(members)...}), expected);
}

// Slots 0 and 1 are the destructor's; those of properties stand in the order of their class's table, which is that of
// the schema, then come the methods.
#define GETTER(NAME, ...) , &C::get##NAME
#define KEY_GETTER(NAME) , &C::get##NAME
#define GETTER_AND_SETTER(NAME, ...) , &C::get##NAME, &C::set##NAME
#define EXPECT_SLOTS(CLASS, TABLE, ...)                                                                                \
    {                                                                                                                  \
        using C = CLASS;                                                                                               \
        expectSlotsFrom(2, &C::startChange,                                                                            \
                        &C::endChange TABLE(GETTER_AND_SETTER, GETTER, KEY_GETTER, CDR_NONE) __VA_ARGS__);             \
    }

TEST(SlotOrder, ManagedClasses){
    EXPECT_SLOTS(QTX_CDRService, QTX_CDRSERVICE_TABLE, , &C::Refresh, &C::ClipFile)
        EXPECT_SLOTS(QTX_CDRServicePrefixBin, QTX_CDRSERVICEPREFIXBIN_TABLE, )
            EXPECT_SLOTS(QTX_CDRServiceAccessBin, QTX_CDRSERVICEACCESSBIN_TABLE, )
                EXPECT_SLOTS(QTX_CDRPushSetting, QTX_CDRPUSHSETTING_TABLE, , &C::PushFileNow,
                             &QTX_CDRPushSettingImpl::setPushSchedule, &QTX_CDRPushSettingImpl::removePushSchedule)
                    EXPECT_SLOTS(QTX_CDRPushStatistics, QTX_CDRPUSHSTATISTICS_TABLE, , &C::Refresh)
                        EXPECT_SLOTS(QTX_CDRPullStatistics, QTX_CDRPULLSTATISTICS_TABLE, , &C::Refresh)}

TEST(SlotOrder, InstanceManager) {
    using M = QTX_CDRServiceInstanceManager;
    expectSlotsFrom(2, &M::init, &M::createQTX_CDRService, &M::destroyQTX_CDRService, &M::add, &M::remove, &M::get,
                    &M::startIteration, &M::hasNext, &M::next, &M::endIteration);
}

// Their first base's functions come before.
TEST(SlotOrder, Providers) {
    using P = QTX_CDRPullStatisticsProvider;
    EXPECT_LT(slot(&P::invokeMethod), slot(&P::initialize));
    expectSlotsFrom(slot(&P::initialize), &P::initialize, &P::enumInstanceNames, &P::enumInstances, &P::getInstance,
                    &P::createInstance, &P::deleteInstance);
    using U = CDRProvider;
    EXPECT_LT(slot(&U::invokeMethod), slot(&U::initialize));
    expectSlotsFrom(slot(&U::initialize), &U::initialize, &U::enumInstanceNames, &U::enumInstances, &U::getInstance,
                    &U::createInstance, &U::deleteInstance, &U::modifyInstance, &U::associators, &U::associatorNames,
                    &U::references, &U::referenceNames);
}

} // namespace
