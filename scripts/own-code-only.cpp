// SPDX-License-Identifier: MIT
// A plugin of clang that scripts/lint loads into clang-tidy. Without it every check walks all of Qt and of
// the standard library in each translation unit, which is most of the time, and then keeps to itself what it
// finds there. With it only the declarations of our own files are walked; the compiler still reads
// everything.
#include <memory>
#include <string>
#include <vector>

#include <clang/AST/ASTConsumer.h>
#include <clang/AST/ASTContext.h>
#include <clang/Basic/SourceManager.h>
#include <clang/Frontend/FrontendPluginRegistry.h>

namespace {

class OwnCodeOnly : public clang::ASTConsumer
{
public:
    void HandleTranslationUnit(clang::ASTContext &context) override
    {
        const clang::SourceManager &sources = context.getSourceManager();
        std::vector<clang::Decl *> own;
        for (clang::Decl *declaration : context.getTranslationUnitDecl()->decls()) {
            if (!sources.isInSystemHeader(sources.getExpansionLoc(declaration->getLocation())))
                own.push_back(declaration);
        }
        context.setTraversalScope(own);
    }
};

class OwnCodeOnlyAction : public clang::PluginASTAction
{
protected:
    std::unique_ptr<clang::ASTConsumer> CreateASTConsumer(clang::CompilerInstance &, llvm::StringRef) override
    {
        return std::make_unique<OwnCodeOnly>();
    }

    bool ParseArgs(const clang::CompilerInstance &, const std::vector<std::string> &) override
    {
        return true;
    }

    ActionType getActionType() override { return AddBeforeMainAction; }
};

const clang::FrontendPluginRegistry::Add<OwnCodeOnlyAction>
    registration("own-code-only", "walk the declarations of our own files only");

} // namespace
