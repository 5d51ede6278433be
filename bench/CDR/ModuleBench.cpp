#include "ModuleBench.hpp"

#include "CDRProvider.hpp"
#include "LabServer.hpp"
#include "RawStore.hpp"
#include "ReadsOfModule.hpp"
#include "osa.h"

#include "OW_CIM.hpp"
#include "OW_ProviderEnvironmentIFC.hpp"
#include "OW_ResultHandlerIFC.hpp"

#include <sys/ipc.h>
#include <sys/msg.h>

#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace bench {
namespace {

using namespace OpenWBEM;
using namespace OpenWBEM::WBEMFlags;

constexpr const char* kNamespace = "root/cimv2";
constexpr const char* kSection = "module in process, beside raw LMDB";

class Names : public CIMObjectPathResultHandlerIFC {
  public:
    std::vector<CIMObjectPath> paths;

  protected:
    void doHandle(const CIMObjectPath& path) override { paths.push_back(path); }
};

class Ignored : public CIMInstanceResultHandlerIFC {
  protected:
    void doHandle(const CIMInstance& /*instance*/) override {}
};

class Module {
  public:
    Module() { provider_.initialize(env_); }

    CIMObjectPath firstOf(const char* name) {
        Names names;
        provider_.enumInstanceNames(env_, kNamespace, name, names, CIMClass(CIMNULL));
        return names.paths.at(0);
    }
    CIMInstance get(const CIMObjectPath& path) {
        return provider_.getInstance(env_, kNamespace, path, E_NOT_LOCAL_ONLY, E_INCLUDE_QUALIFIERS,
                                     E_EXCLUDE_CLASS_ORIGIN, nullptr, CIMClass(CIMNULL));
    }
    void enumerate(const char* name) {
        Ignored ignored;
        provider_.enumInstances(env_, kNamespace, name, ignored, E_NOT_LOCAL_ONLY, E_DEEP, E_INCLUDE_QUALIFIERS,
                                E_EXCLUDE_CLASS_ORIGIN, nullptr, CIMClass(CIMNULL), CIMClass(CIMNULL));
    }
    void modify(const CIMInstance& now, const CIMInstance& before, const StringArray& names) {
        provider_.modifyInstance(env_, kNamespace, now, before, E_INCLUDE_QUALIFIERS, &names, CIMClass(CIMNULL));
    }

  private:
    CDRProvider provider_;
    ProviderEnvironmentIFCRef env_;
};

/// Adds the cost of the work, and of raw reads of the entries that it reads.
void compareReads(Report& report, const Effort& effort, const std::string& name, RawStore& raw, Wanted wanted,
                  const std::function<void()>& work) {
    const std::vector<std::string> entries = readsOf(work);
    if (entries.empty()) {
        throw std::runtime_error(name + " reads no entry");
    }
    const Pairs pairs = compare(effort.rounds * 4, effort.quick ? 200 : 2000, work, [&] { raw.read(entries); });
    report.add(Row{kSection, name + " (" + std::to_string(entries.size()) + " reads)", "us", pairs.cost() / 1000,
                   pairs.floor() / 1000, pairs.ratio(), wanted});
}

/// Alternates a property between two values, as clients' changes do.
void compareChanges(Report& report, const Effort& effort, const std::string& name, Module& module, const char* property,
                    const CIMValue (&values)[2], const CIMObjectPath& path, const std::function<void()>& floor) {
    const CIMInstance before = module.get(path);
    CIMInstance states[2];
    for (int i = 0; i < 2; ++i) {
        states[i] = CIMInstance(CIMName(path.getClassName()));
        states[i].setProperties(path.getKeys());
        states[i].setProperty(CIMProperty(property, values[i]));
    }
    const StringArray names(1, property);
    int number = 0;
    const Pairs pairs = compare(
        effort.rounds * 4, effort.quick ? 20 : 100, [&] { module.modify(states[++number % 2], before, names); }, floor);
    report.add(Row{kSection, name, "us", pairs.cost() / 1000, pairs.floor() / 1000, pairs.ratio(), {}});
}

/// The queue of the CDR service, and somebody who empties it.
class Listener {
  public:
    Listener() {
        if (osQueueCreate("CDRService", &id_) != OSA_OK) {
            throw std::runtime_error("cannot create the queue");
        }
        thread_ = std::thread([this] {
            char message[OSA_MAX_MESSAGE];
            std::uint32_t length = 0;
            while (osQueueReceive(id_, message, sizeof message, &length, -1) == OSA_OK) {
            }
        });
    }
    ~Listener() {
        osQueueDelete(id_);
        thread_.join();
    }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

  private:
    std::uint32_t id_ = 0;
    std::thread thread_;
};

/// A message sent and taken: the kernel's part of a notification.
class Message {
  public:
    Message() : queue_(::msgget(IPC_PRIVATE, 0600)) {}
    ~Message() { ::msgctl(queue_, IPC_RMID, nullptr); }
    Message(const Message&) = delete;
    Message& operator=(const Message&) = delete;

    void send() {
        struct {
            long type;
            char text[1];
        } message{1, {'x'}};
        ::msgsnd(queue_, &message, sizeof message.text, 0);
        ::msgrcv(queue_, &message, sizeof message.text, 0, 0);
    }

  private:
    const int queue_;
};

void benchChanges(Report& report, const Effort& effort, Module& module, RawStore& raw) {
    const CIMValue numbers[2] = {CIMValue(UInt16(10)), CIMValue(UInt16(11))};
    const CIMValue digits[2] = {CIMValue(String("123")), CIMValue(String("4567"))};
    const Listener listener;
    Message message;
    compareChanges(report, effort, "modifyInstance QTX_CDRService (with a message)", module, "DigitsLimit", numbers,
                   module.firstOf("QTX_CDRService"), [&] {
                       raw.commit();
                       message.send();
                   });
    compareChanges(report, effort, "modifyInstance QTX_CDRServicePrefixBin", module, "PrefixBin", digits,
                   module.firstOf("QTX_CDRServicePrefixBin"), [&] { raw.commit(); });
}

} // namespace

void benchModule(Report& report, const Effort& effort) {
    const LabFolder folder;
    if (std::freopen("/dev/null", "w", stdout) == nullptr) { // the module's traces go there
        throw std::runtime_error("cannot redirect the output");
    }
    loadDefaults();
    std::filesystem::create_directory(folder.path() + "/raw");
    std::filesystem::copy(folder.path() + "/registry.mdb", folder.path() + "/raw/registry.mdb");
    RawStore raw(folder.path() + "/raw/registry.mdb");
    Module module;
    for (const char* name : {"QTX_CDRService", "QTX_CDRServicePrefixBin", "QTX_CDRServiceAccessBin",
                             "QTX_CDRPushSetting", "QTX_CDRPushStatistics", "QTX_CDRPullStatistics"}) {
        const bool service = std::string(name) == "QTX_CDRService";
        const CIMObjectPath path = module.firstOf(name);
        compareReads(report, effort, std::string("getInstance ") + name, raw, service ? ratioAtMost(2) : Wanted(),
                     [&] { module.get(path); });
        compareReads(report, effort, std::string("enumInstances ") + name, raw, {}, [&] { module.enumerate(name); });
    }
    benchChanges(report, effort, module, raw);
}

} // namespace bench
