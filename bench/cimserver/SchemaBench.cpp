// Schemas of one to many classes, generated in the manner of the large published ones: a tree with descriptions, value
// maps and methods, about 6 KB a class.
#include "Client.hpp"
#include "LabServer.hpp"
#include "ServerBench.hpp"

#include <filesystem>
#include <fstream>
#include <string>

namespace bench {
namespace {

constexpr int kFeatures = 8;
constexpr int kChildren = 4; ///< of each class but the last

std::string description(const std::string& of, int sentences) {
    std::string text = "Description(\n";
    for (int i = 0; i < sentences; ++i) {
        text += "      \"What a reader of the schema is told about " + of + ", sentence " + std::to_string(i) +
                ", which is as long as most. \"\n";
    }
    return text + "    )";
}

std::string valueMap(int values) {
    std::string map;
    std::string names;
    for (int i = 0; i < values; ++i) {
        const std::string separator = i == 0 ? "" : ", ";
        map += separator + "\"" + std::to_string(i) + "\"";
        names += separator + "\"State Number " + std::to_string(i) + "\"";
    }
    return "ValueMap { " + map + " }, Values { " + names + " }, ";
}

std::string property(const std::string& of, int number) {
    const std::string name = of + "Property" + std::to_string(number);
    const bool state = number % 4 == 1;
    return "  [" + (state ? valueMap(10) : std::string()) + "MappingStrings { \"MIF.BENCH|" + of + "|001." +
           std::to_string(number) + "\" }, " + description(name, 4) + "]\n  " + (state ? "uint16 " : "string ") + name +
           ";\n";
}

std::string method(const std::string& of) {
    const std::string name = of + "Change";
    return "  [" + valueMap(6) + description(name, 4) + "]\n  uint32 " + name + "([In, " + description("Wanted", 1) +
           "] uint16 Wanted, [In(false), Out, " + description("Job", 1) + "] string Job);\n";
}

std::string className(int number) {
    return "BENCH_Class" + std::to_string(number);
}

std::string schemaOf(int classes) {
    std::string mof;
    for (int i = 0; i < classes; ++i) {
        const std::string name = className(i);
        const std::string parent = i == 0 ? "" : " : " + className((i - 1) / kChildren);
        mof.append("[Version(\"1.0.0\"), ").append(description(name, 6));
        mof.append("]\nclass ").append(name).append(parent).append("\n{\n");
        mof += i == 0 ? "  [Key, " + description("the key", 1) + "] string InstanceID;\n" : "";
        for (int feature = 0; feature < kFeatures; ++feature) {
            mof += property(name.substr(6), feature);
        }
        mof += method(name.substr(6)) + "};\n\n";
    }
    return mof;
}

struct Measured {
    double start = 0; ///< milliseconds
    double resident = 0;
    double getClass = 0; ///< microseconds
};

Measured measureSchema(const std::string& file, int classes) {
    const LabServer server({}, {"--mof", file});
    Measured result;
    Connection connection(server.port());
    connection.ask(getClass(className(0)));
    result.start = nanoseconds(Clock::now() - server.started()) / 1e6;
    result.resident = static_cast<double>(server.memory("VmRSS")) / 1024;
    const std::string request = getClass(className(classes - 1));
    result.getClass = timeOf(300, [&] { connection.ask(request); }) / 1000;
    return result;
}

} // namespace

void benchSchema(Report& report, const Effort& effort) {
    const LabFolder folder;
    const std::string file = folder.path() + "/schema.mof";
    for (const int classes : {1, 10, 100, 500, 1500}) {
        std::ofstream(file) << schemaOf(classes);
        std::vector<double> start;
        std::vector<double> resident;
        std::vector<double> getClass;
        for (int i = 0; i < effort.rounds; ++i) {
            const Measured measured = measureSchema(file, classes);
            start.push_back(measured.start);
            resident.push_back(measured.resident);
            getClass.push_back(measured.getClass);
        }
        const std::string name =
            std::to_string(classes) + " classes, " + std::to_string(std::filesystem::file_size(file) / 1024) + " KiB: ";
        const bool most = classes == 1500;
        report.add(Row{"schema", name + "exec to the first answer", "ms", median(start), 0, 0,
                       most ? costAtMost(300) : Wanted()});
        report.add(Row{"schema", name + "GetClass of a leaf", "us", median(getClass), 0, 0, {}});
        report.add(Row{"schema", name + "resident", "MiB", median(resident), 0, 0, most ? costAtMost(45) : Wanted()});
        report.add(
            Point{"schema", "classes", "ms, us, MiB", "exec to the first answer, ms", classes * 1.0, median(start)});
        report.add(Point{"schema", "classes", "ms, us, MiB", "GetClass, us", classes * 1.0, median(getClass)});
        report.add(Point{"schema", "classes", "ms, us, MiB", "resident, MiB", classes * 1.0, median(resident)});
    }
}

} // namespace bench
