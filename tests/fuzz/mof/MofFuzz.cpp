// Any bytes as MOF: compiled or refused with an error, nothing else.
#include "cimserver/schema/Repository.hpp"

#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    cimserver::schema::Repository repository;
    try {
        repository.compileText(std::string(data, data + size), "fuzz", "root/fuzz");
    } catch (const cimserver::schema::MofError&) {
        return 0;
    }
    for (const auto* const cimClass : repository.subclasses("root/fuzz", "", true)) {
        cimClass->toMOF();
        for (const auto* const instance : repository.instances("root/fuzz", cimClass->getName())) {
            if (repository.findInstance("root/fuzz", OpenWBEM::CIMObjectPath("", *instance)) != instance) {
                std::abort();
            }
        }
    }
    return 0;
}
