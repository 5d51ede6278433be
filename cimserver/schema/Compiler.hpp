// Compiles MOF files, with what they include, into namespaces.
#pragma once

#include "cimserver/schema/ClassBuilder.hpp"
#include "cimserver/schema/InstanceBuilder.hpp"

#include <filesystem>

namespace cimserver::schema {

/// One run over a file or text. Instances, and classes whose superclass or a qualifier's declaration follows, are made
/// at its end. Declarations go into `target`, which the caller must discard after an exception.
class Compiler {
  public:
    using Aliases = NameMap<std::string>; ///< alias to namespace

    /// Starts in the namespace `ns`, creating it if needed. `aliases` must outlive the compiler.
    Compiler(Namespaces& target, const Aliases& aliases, const std::string& ns);

    /// Includes must be in the file's folder or below it. Throws MofError.
    void compileFile(const std::filesystem::path& file);
    /// Includes are refused: a text has no folder. Throws MofError.
    void compileText(std::string_view mof, const std::string& name);

  private:
    struct PendingClass {
        ast::ClassDeclaration declaration;
        Namespace* ns;
        std::size_t place; ///< among its siblings, which stay in their order
    };

    void compile(std::string_view mof, const std::string& name, const std::filesystem::path& folder);
    void apply(const ast::Pragma& pragma, const std::filesystem::path& folder);
    void apply(const ast::QualifierDeclaration& declaration, const std::filesystem::path& folder);
    void apply(ast::ClassDeclaration& declaration, const std::filesystem::path& folder);
    void apply(const ast::InstanceDeclaration& declaration, const std::filesystem::path& folder);
    void finish();
    static bool hasSuperClass(const PendingClass& pending);
    void add(const PendingClass& pending);
    const Inheritance& inheritanceFrom(const OpenWBEM::CIMClass* super);
    void include(const ast::Pragma& pragma, const std::filesystem::path& folder);
    void enterNamespace(const std::string& name, const Location& location);
    std::string read(const std::filesystem::path& file, const Location& where);

    Namespaces& target_;
    const Aliases& aliases_;
    Namespace* current_ = nullptr;
    std::filesystem::path root_; ///< no include leaves this folder
    std::vector<PendingClass> classes_;
    std::map<const OpenWBEM::CIMClass*, Inheritance> inheritances_;
    InstanceBuilder instances_;
    unsigned depth_ = 0;
    std::size_t bytesRead_ = 0;
};

} // namespace cimserver::schema
