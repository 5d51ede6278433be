// Any bytes as MOF: compiled or refused with an error, nothing else.
#include "../Require.hpp"

#include "cimserver/schema/Repository.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    cimserver::schema::Repository repository;
    try {
        repository.compileText(std::string(textOf(data, size)), "fuzz", "root/fuzz");
    } catch (const cimserver::schema::MofError&) {
        return 0;
    }
    for (const auto* const cimClass : repository.subclasses("root/fuzz", "", true)) {
        cimClass->toMOF();
        for (const auto* const instance : repository.instances("root/fuzz", cimClass->getName())) {
            require(repository.findInstance("root/fuzz", OpenWBEM::CIMObjectPath("", *instance)) == instance,
                    "an instance is found by its path");
        }
    }
    return 0;
}
