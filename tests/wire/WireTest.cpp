// Plays each conversation of this folder against the CIM-XML side over a real object manager and a provider. After
// every step the same server must still answer a good request.
#include "Server.hpp"
#include "Support.hpp"
#include "WireCase.hpp"
#include "XmlMatch.hpp"

#include "cimserver/cimxml/Grammar.hpp"
#include "cimserver/common/Log.hpp"
#include "cimserver/common/Memory.hpp"

#include <regex>

namespace {

namespace fs = std::filesystem;
using namespace cimserver;

std::vector<fs::path> allCases() {
    std::vector<fs::path> found;
    for (const auto& entry : fs::recursive_directory_iterator(WIRE_CASES)) {
        if (entry.path().extension() == ".wire") {
            found.push_back(entry.path());
        }
    }
    std::sort(found.begin(), found.end());
    return found;
}

cimxml::DispatcherSettings settings() {
    cimxml::DispatcherSettings settings;
    settings.hostName = "host.example";
    settings.enumerations.perUser = 2;
    settings.enumerations.count = 3;
    settings.xml.elements = 500;
    settings.errorHints = {{"none", "see the log"}, {"an objection", "the diary is full"}};
    return settings;
}

/// The server counts a CIM error for each reply that holds one.
http::Response answerOf(wire::Server& server, const wire::Step& step, const std::string& context = "") {
    const auto before = server.errors();
    auto response = server.handle(wire::requestOf(step, context));
    EXPECT_EQ(server.errors() - before, response.body.find("<ERROR ") == std::string::npos ? 0U : 1U);
    return response;
}

std::string field(const http::Response& response, const std::string& name) {
    const std::string* value = response.fields.find(name);
    return value == nullptr ? "" : *value;
}

/// What every reply must be, whatever it says.
void expectProperReply(const std::string& body) {
    EXPECT_EQ(body.rfind("<?xml version=\"1.0\" encoding=\"utf-8\" ?>\n<CIM ", 0), 0U);
    EXPECT_FALSE(std::regex_search(body, std::regex("<[A-Z.]+[^>]*/>|<!|\\r")));
    EXPECT_FALSE(std::regex_search(body, std::regex("<PARAMVALUE[^>]*></PARAMVALUE>|<RETURNVALUE>")));
    pugi::xml_document document;
    ASSERT_TRUE(document.load_string(body.c_str()));
    EXPECT_NO_THROW(cimxml::checkGrammar(document.document_element(), cimxml::Strictness::Strict)) << body;
    for (const auto& found : document.select_nodes("//KEYVALUE")) {
        EXPECT_TRUE(found.node().attribute("VALUETYPE") && found.node().attribute("TYPE")) << body;
    }
}

void expectAnswer(const wire::Step& step, const http::Response& response) {
    EXPECT_EQ(std::to_string(response.status), step.status) << response.body;
    if (response.status != 200) {
        const std::string prefix = step.method == "M-POST" ? "73-" : "";
        EXPECT_EQ(field(response, prefix + "CIMError"), step.cimError) << response.body;
        return;
    }
    EXPECT_EQ(field(response, "Content-Type"), "application/xml; charset=\"utf-8\"");
    EXPECT_EQ(field(response, "Cache-Control"), "no-cache");
    EXPECT_EQ(field(response, step.method == "M-POST" ? "73-CIMOperation" : "CIMOperation"), "MethodResponse");
    EXPECT_NE(field(response, "WBEMServerResponseTime"), "");
    expectProperReply(response.body);
    pugi::xml_document expected;
    pugi::xml_document actual;
    ASSERT_TRUE(expected.load_string(step.answer.c_str())) << step.answer;
    ASSERT_TRUE(actual.load_string(response.body.c_str()));
    const pugi::xml_node whole = actual.document_element();
    const bool message = std::string(expected.document_element().name()) == "CIM";
    const pugi::xml_node part = whole.child("MESSAGE").child("SIMPLERSP").first_child();
    EXPECT_EQ(wire::difference(expected.document_element(), message ? whole : part), "") << response.body;
}

std::string contextIn(const std::string& body) {
    pugi::xml_document document;
    document.load_string(body.c_str());
    return document.select_node("//PARAMVALUE[@NAME='EnumerationContext']/VALUE").node().child_value();
}

void expectStillAnswers(wire::Server& server) {
    wire::Step step;
    step.body = "<IMETHODCALL NAME=\"EnumerateClassNames\"><LOCALNAMESPACEPATH><NAMESPACE NAME=\"interop\"/>"
                "</LOCALNAMESPACEPATH></IMETHODCALL>";
    const http::Response response = answerOf(server, step);
    EXPECT_NE(response.body.find("CIM_ManagedElement"), std::string::npos) << response.body;
}

class Wire : public testing::TestWithParam<fs::path> {};

TEST_P(Wire, Case) {
    const support::TempDir folder;
    log::configure({folder / "log"});
    wire::Server server(settings());
    std::string context;
    for (const wire::Step& step : wire::readCase(GetParam())) {
        SCOPED_TRACE(GetParam().string() + "\n" + step.body);
        const std::size_t logged = support::contentOf(folder / "log").size();
        const http::Response response = answerOf(server, step, context);
        expectAnswer(step, response);
        const std::string log = support::contentOf(folder / "log").substr(logged);
        for (const std::string& text : step.logged) {
            EXPECT_NE(log.find(text), std::string::npos) << log;
        }
        for (const std::string& text : step.notLogged) {
            EXPECT_EQ(log.find(text), std::string::npos) << log;
        }
        if (const std::string next = contextIn(response.body); !next.empty()) {
            context = next;
        }
        expectStillAnswers(server);
    }
}

TEST(Memory, MustHoldTheTreeOfALongRequest) {
    MemoryBudget budget(100'000);
    MemoryAccount memory(budget, "peer");
    http::Request request{"POST", "/", 11, {}, std::string(20'000, ' '), "", {}, &memory};
    request.fields.add("CIMOperation", "MethodCall");
    const http::Response response = wire::Server().handle(request);
    EXPECT_TRUE(response.status == 503 && response.fields.find("CIMError") == nullptr);
}

std::string caseName(const testing::TestParamInfo<fs::path>& info) {
    std::string name = info.param.parent_path().filename().string() + "_" + info.param.stem().string();
    std::replace_if(
        name.begin(), name.end(), [](char c) { return std::isalnum(static_cast<unsigned char>(c)) == 0; }, '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Cases, Wire, testing::ValuesIn(allCases()), caseName);

} // namespace
