#include "cimserver/schema/Compiler.hpp"

#include "cimserver/schema/ClassBuilder.hpp"
#include "cimserver/schema/Parser.hpp"
#include "cimserver/schema/QualifierTypes.hpp"

#include <algorithm>
#include <fstream>

namespace cimserver::schema {

using namespace OpenWBEM;
namespace fs = std::filesystem;

namespace {

constexpr unsigned kDeepestInclude = 16;
constexpr std::size_t kMostBytes = std::size_t{64} << 20; // in all; the whole published CIM schema takes about 12 MiB

bool isWithin(const fs::path& file, const fs::path& folder) {
    const auto [end, ignored] = std::mismatch(folder.begin(), folder.end(), file.begin(), file.end());
    return end == folder.end();
}

bool isNamespaceName(const std::string& name) {
    const auto allowed = [](char c) {
        return std::string_view("/_-.").find(c) != std::string_view::npos ||
               std::isalnum(static_cast<unsigned char>(c)) != 0;
    };
    return !name.empty() && name.size() <= 256 && name.find("//") == std::string::npos && name.back() != '/' &&
           std::all_of(name.begin(), name.end(), allowed);
}

bool areDeclared(const ast::QualifierList& qualifiers, const Namespace& ns) {
    return std::all_of(qualifiers.begin(), qualifiers.end(),
                       [&](const auto& use) { return ns.qualifiers.count(fold(use.name)) != 0; });
}

/// True when the superclass and all qualifiers of the class are declared already.
bool isReady(const ast::ClassDeclaration& declaration, const Namespace& ns) {
    const auto areReady = [&](const auto& elements) {
        return std::all_of(elements.begin(), elements.end(),
                           [&](const auto& element) { return areDeclared(element.qualifiers, ns); });
    };
    return (declaration.superClass.empty() || ns.findClass(declaration.superClass) != nullptr) &&
           areDeclared(declaration.qualifiers, ns) && areReady(declaration.features) &&
           std::all_of(declaration.features.begin(), declaration.features.end(),
                       [&](const auto& f) { return !f.parameters || areReady(*f.parameters); });
}

bool identical(const CIMQualifierType& a, const CIMQualifierType& b) {
    return !(a < b) && !(b < a);
}

} // namespace

Compiler::Compiler(Namespaces& target, const Aliases& aliases, const std::string& ns)
    : target_(target), aliases_(aliases) {
    Place start;
    start.file = std::make_shared<const std::string>("namespace option");
    enterNamespace(ns, start);
}

void Compiler::enterNamespace(const std::string& name, const Place& place) {
    const std::string local = localNamespace(name);
    if (!isNamespaceName(local)) {
        fail(place, "\"" + name + "\" is not the name of a namespace of this server");
    }
    const auto alias = aliases_.find(fold(local));
    current_ = &target_[alias == aliases_.end() ? fold(local) : alias->second];
    if (current_->name.empty()) {
        current_->name = local;
    }
}

std::string Compiler::read(const fs::path& file, const std::string& complaint) {
    std::error_code error;
    const auto size = fs::is_regular_file(file, error) ? fs::file_size(file, error) : 0;
    std::ifstream in(file, std::ios::binary);
    if (error || !in || !fs::is_regular_file(file)) {
        throw MofError(complaint + "the file \"" + file.string() + "\" cannot be read");
    }
    if (size > kMostBytes - std::min(kMostBytes, bytesRead_)) {
        throw MofError(complaint + "the schema is larger than " + std::to_string(kMostBytes >> 20) + " MiB");
    }
    std::string text(size, '\0');
    in.read(text.data(), static_cast<std::streamsize>(size));
    text.resize(static_cast<std::size_t>(in.gcount()));
    bytesRead_ += text.size();
    return text;
}

void Compiler::compileFile(const fs::path& file) {
    const std::string text = read(file, file.string() + ":1:1: ");
    root_ = fs::weakly_canonical(file).parent_path();
    compile(text, file.string(), root_);
    finish();
}

void Compiler::compileText(std::string_view mof, const std::string& name) {
    compile(mof, name, {});
    finish();
}

void Compiler::compile(std::string_view mof, const std::string& name, const fs::path& folder) {
    Parser parser(mof, name);
    while (const auto declaration = parser.next()) {
        std::visit([&](const auto& it) { apply(it, folder); }, *declaration);
    }
}

void Compiler::apply(const ast::Pragma& pragma, const fs::path& folder) {
    if (sameName(pragma.name, "include")) {
        include(pragma, folder);
    } else if (sameName(pragma.name, "namespace")) {
        enterNamespace(pragma.argument, pragma.place);
    }
    // Others, such as locale, have no bearing here; unknown ones are to be passed over.
}

void Compiler::include(const ast::Pragma& pragma, const fs::path& folder) {
    if (folder.empty()) {
        fail(pragma.place, "an include is possible in a file only");
    }
    if (depth_ >= kDeepestInclude) {
        fail(pragma.place, "includes are nested deeper than " + std::to_string(kDeepestInclude));
    }
    std::string written = pragma.argument;
    std::replace(written.begin(), written.end(), '\\', '/');
    std::error_code error;
    const fs::path file = fs::weakly_canonical(folder / written, error);
    if (error || fs::path(written).is_absolute() || !isWithin(file, root_)) {
        fail(pragma.place, "the include \"" + pragma.argument + "\" leads out of the schema's folder");
    }
    const std::string text = read(file, *pragma.place.file + ":" + std::to_string(pragma.place.line) + ":" +
                                            std::to_string(pragma.place.column) + ": ");
    ++depth_;
    compile(text, file.string(), file.parent_path());
    --depth_;
}

void Compiler::apply(const ast::QualifierDeclaration& declaration, const fs::path&) {
    auto type = std::make_shared<const CIMQualifierType>(buildQualifierType(declaration));
    const auto [place, isNew] = current_->qualifiers.try_emplace(fold(declaration.name), type);
    if (!isNew && !identical(*place->second, *type)) {
        fail(declaration.place, "the qualifier \"" + declaration.name + "\" is declared already, and differently");
    }
}

void Compiler::apply(const ast::ClassDeclaration& declaration, const fs::path&) {
    if (isReady(declaration, *current_)) {
        add(declaration, *current_);
    } else {
        waiting_.push_back({declaration, current_});
    }
}

void Compiler::apply(const ast::InstanceDeclaration& declaration, const fs::path&) {
    instances_.add(declaration, *current_);
}

void Compiler::add(const ast::ClassDeclaration& declaration, Namespace& ns) {
    BuiltClass built = buildClass(declaration, ns);
    const auto cimClass = std::make_shared<const CIMClass>(std::move(built.cimClass));
    ns.classes[fold(declaration.name)] = cimClass;
    ns.children[fold(declaration.superClass)].push_back(cimClass);
    for (Narrowing& narrowing : built.narrowings) {
        narrowings_.emplace_back(std::move(narrowing), &ns);
    }
}

/// Adds the classes that wait, each round at least one level of each tree; what is left lacks its superclass.
void Compiler::addWaiting() {
    for (unsigned round = 0; round < kDeepestInheritance && !waiting_.empty(); ++round) {
        std::vector<Waiting> left;
        for (Waiting& one : waiting_) {
            if (one.declaration.superClass.empty() || one.ns->findClass(one.declaration.superClass) != nullptr) {
                add(one.declaration, *one.ns);
            } else {
                left.push_back(std::move(one));
            }
        }
        waiting_.swap(left);
    }
    for (const Waiting& one : waiting_) {
        add(one.declaration, *one.ns);
    }
}

void Compiler::finish() {
    addWaiting();
    for (const auto& [narrowing, ns] : narrowings_) {
        checkNarrowing(narrowing, *ns);
    }
    instances_.finish();
}

} // namespace cimserver::schema
