#include "cimserver/schema/Compiler.hpp"

#include "cimserver/common/Text.hpp"
#include "cimserver/schema/Names.hpp"
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

bool declares(const Namespace& ns, const ast::QualifierList& qualifiers) {
    return std::all_of(qualifiers.begin(), qualifiers.end(),
                       [&](const auto& use) { return ns.qualifiers.find(use.name) != ns.qualifiers.end(); });
}

bool declares(const Namespace& ns, const ast::Feature& feature) {
    const auto declaresThose = [&](const ast::Parameter& one) { return declares(ns, one.qualifiers); };
    return declares(ns, feature.qualifiers) &&
           (!feature.parameters || std::all_of(feature.parameters->begin(), feature.parameters->end(), declaresThose));
}

/// Whether the namespace has all of the class's qualifiers, which may otherwise still follow.
bool declaresQualifiers(const Namespace& ns, const ast::ClassDeclaration& declaration) {
    return declares(ns, declaration.qualifiers) &&
           std::all_of(declaration.features.begin(), declaration.features.end(),
                       [&](const ast::Feature& feature) { return declares(ns, feature); });
}

/// The beginning of a file, for what is wrong with it as a whole.
Location startOf(const std::string& file) {
    Location start;
    start.file = std::make_shared<const std::string>(file);
    return start;
}

bool identical(const CIMQualifierType& a, const CIMQualifierType& b) {
    return !(a < b) && !(b < a);
}

} // namespace

Compiler::Compiler(Namespaces& target, const Aliases& aliases, const std::string& ns)
    : target_(target), aliases_(aliases) {
    enterNamespace(ns, startOf("namespace option"));
}

void Compiler::enterNamespace(const std::string& name, const Location& location) {
    const std::string local = localNamespace(name);
    if (!isNamespaceName(local)) {
        fail(location, "\"" + name + "\" is not the name of a namespace of this server");
    }
    const auto alias = aliases_.find(local);
    const std::string& own = alias == aliases_.end() ? local : alias->second;
    current_ = &target_[own];
    if (current_->name.empty()) {
        current_->name = own.c_str();
    }
}

/// The text of a file; `where` is blamed when it cannot be read.
std::string Compiler::read(const fs::path& file, const Location& where) {
    std::error_code error;
    const bool regular = fs::is_regular_file(file, error); // opening a FIFO would wait for a writer
    const auto size = regular ? fs::file_size(file, error) : 0;
    std::ifstream in;
    if (regular && !error) {
        in.open(file, std::ios::binary);
    }
    if (!in.is_open()) {
        fail(where, "the file \"" + file.string() + "\" cannot be read");
    }
    if (size > kMostBytes - std::min(kMostBytes, bytesRead_)) {
        fail(where, "the schema is larger than " + std::to_string(kMostBytes >> 20) + " MiB");
    }
    std::string text(static_cast<std::size_t>(size), '\0');
    in.read(text.data(), static_cast<std::streamsize>(size));
    text.resize(static_cast<std::size_t>(in.gcount()));
    bytesRead_ += text.size();
    return text;
}

void Compiler::compileFile(const fs::path& file) {
    root_ = fs::weakly_canonical(file).parent_path();
    compile(read(file, startOf(file.string())), file.string(), root_);
    finish();
}

void Compiler::compileText(std::string_view mof, const std::string& name) {
    compile(mof, name, {});
    finish();
}

void Compiler::compile(std::string_view mof, const std::string& name, const fs::path& folder) {
    Parser parser(mof, name);
    while (auto declaration = parser.next()) {
        std::visit([&](auto& it) { apply(it, folder); }, *declaration);
    }
}

void Compiler::apply(const ast::Pragma& pragma, const fs::path& folder) {
    if (equalsIgnoringCase(pragma.name, "include")) {
        include(pragma, folder);
    } else if (equalsIgnoringCase(pragma.name, "namespace")) {
        enterNamespace(pragma.argument, pragma.location);
    }
    // Other pragmas, such as locale, have no effect here; unknown ones are ignored.
}

void Compiler::include(const ast::Pragma& pragma, const fs::path& folder) {
    if (folder.empty()) {
        fail(pragma.location, "an include is possible in a file only");
    }
    if (depth_ >= kDeepestInclude) {
        fail(pragma.location, "includes are nested deeper than " + std::to_string(kDeepestInclude));
    }
    std::string written = pragma.argument;
    std::replace(written.begin(), written.end(), '\\', '/');
    std::error_code error;
    const fs::path file = fs::weakly_canonical(folder / written, error);
    if (error || fs::path(written).is_absolute() || !isWithin(file, root_)) {
        fail(pragma.location, "the include \"" + pragma.argument + "\" leads out of the schema's folder");
    }
    const std::string text = read(file, pragma.location);
    ++depth_;
    compile(text, file.string(), file.parent_path());
    --depth_;
}

void Compiler::apply(const ast::QualifierDeclaration& declaration, const fs::path&) {
    auto type = std::make_shared<const CIMQualifierType>(buildQualifierType(declaration));
    const auto [entry, isNew] = current_->qualifiers.try_emplace(declaration.name, type);
    if (!isNew && !identical(*entry->second, *type)) {
        fail(declaration.location, "the qualifier \"" + declaration.name + "\" is declared already, and differently");
    }
}

/// Makes the class at once if it can, so that a large schema is never held as it is written.
void Compiler::apply(ast::ClassDeclaration& declaration, const fs::path&) {
    auto& siblings = current_->children[declaration.superClass];
    PendingClass one{std::move(declaration), current_, siblings.size()};
    siblings.emplace_back();
    if (hasSuperClass(one) && declaresQualifiers(*one.ns, one.declaration)) {
        add(one);
    } else {
        classes_.push_back(std::move(one));
    }
}

void Compiler::apply(const ast::InstanceDeclaration& declaration, const fs::path&) {
    instances_.add(declaration, *current_);
}

void Compiler::finish() {
    for (unsigned level = 0; level < kDeepestInheritance && !classes_.empty(); ++level) {
        std::vector<PendingClass> left;
        for (PendingClass& one : classes_) {
            if (hasSuperClass(one)) {
                add(one);
            } else {
                left.push_back(std::move(one)); // each round adds at least one level of each tree
            }
        }
        classes_.swap(left);
    }
    for (const PendingClass& one : classes_) {
        add(one); // throws, naming what is missing
    }
    instances_.finish();
}

bool Compiler::hasSuperClass(const PendingClass& pending) {
    const std::string& superClass = pending.declaration.superClass;
    return superClass.empty() || pending.ns->findClass(superClass) != nullptr;
}

void Compiler::add(const PendingClass& pending) {
    const ast::ClassDeclaration& declaration = pending.declaration;
    const CIMClass* const super = pending.ns->findClass(declaration.superClass);
    const auto built = std::make_shared<const CIMClass>(buildClass(declaration, *pending.ns, inheritanceFrom(super)));
    pending.ns->classes[declaration.name] = built;
    pending.ns->children[declaration.superClass][pending.place] = built;
}

/// Made once for all subclasses, which share it.
const Inheritance& Compiler::inheritanceFrom(const CIMClass* super) {
    static const Inheritance none;
    if (super == nullptr) {
        return none;
    }
    const auto [found, isNew] = inheritances_.try_emplace(super);
    if (isNew) {
        found->second = schema::inheritanceFrom(*super);
    }
    return found->second;
}

} // namespace cimserver::schema
