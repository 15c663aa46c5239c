#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include <platen/edit.h>
#include <platen/inspect.h>
#include "tests/inspect/found.h"
#include "tests/support/random_documents.h"
#include "tests/support/trees.h"

namespace {

struct Document {
    std::string body;
    PiaKind kind;
};

Document randomDocument(RandomDocuments& random) {
    const RandomKind kind = randomKinds[random.below(std::size(randomKinds))];
    Document document;
    PiaReport report;
    EXPECT_TRUE(piaWriteBody(*random.make(kind), document.body, report));
    document.kind = kind == RandomKind::Ctb || kind == RandomKind::CtbWithoutIndex ? PiaKind::Ctb
                    : kind == RandomKind::Stb || kind == RandomKind::StbWithIndex  ? PiaKind::Stb
                                                                                   : PiaKind::Pc3;
    return document;
}

void damage(std::string& bytes, RandomDocuments& chance) {
    if (bytes.empty()) {
        return;
    }
    const std::size_t at = chance.below(bytes.size());
    const std::size_t length = std::min(bytes.size() - at, 1 + chance.below(60));
    switch (chance.below(6)) {
        case 0:
        case 1:
            bytes[at] =
                static_cast<char>(static_cast<unsigned char>(bytes[at]) ^ (1U << chance.below(8)));
            break;
        case 2:
            bytes.resize(at);
            break;
        case 3:
            for (std::size_t count = 1 + chance.below(9); count > 0; --count) {
                bytes.insert(at, 1, static_cast<char>(chance.below(256)));
            }
            break;
        case 4:
            bytes.erase(at, length);
            break;
        default: {
            // Two pieces change places.
            const std::size_t other = chance.below(bytes.size() - length + 1);
            const std::string piece = bytes.substr(at, length);
            bytes.replace(at, length, bytes.substr(other, length));
            bytes.replace(other, length, piece);
        }
    }
}

/// All text that can be had out of a damaged file.
std::string textsIn(const std::string& file) {
    std::string texts;
    const auto add = [&](const std::string& stream) {
        ut::ByteBuffer bytes;
        std::size_t consumed = 0;
        auto stop = ut::ZlibEngine::Stop::None;
        static_cast<void>(
            ut::ZlibEngine::decompress(stream, bytes, 0, PiaLimits().bodyBytes, consumed, stop));
        texts.append(1, '\n').append(bytes.view());
    };
    for (std::size_t at = 0; at < std::min<std::size_t>(file.size(), 200); ++at) {
        add(file.substr(at));
    }
    if (file.size() > 62) {
        add("\x78\x9C" + file.substr(62));
    }
    return texts;
}

/// Names and values of the outcome that are neither in the texts nor in an assumption.
std::set<std::wstring> inventedIn(const platen::RepairResult& result, const PiaBlock& root,
                                  const std::string& body, const std::string& file) {
    std::set<std::wstring> texts;
    for (PiaWalk walk(root); walk.next();) {
        const PiaItem& item = walk.item();
        texts.emplace(item.name);
        if (item.type != PiaItemType::Block && item.type != PiaItemType::Bool) {
            texts.insert(static_cast<const PiaTextItem&>(item).value.str());
        }
    }
    const auto eraseThoseIn = [&](const std::string& source) {
        std::erase_if(texts, [&](const std::wstring& text) {
            std::string ansi;
            static_cast<void>(ut::convertToAnsi(text, ansi));
            return source.find(ansi) != source.npos ||
                   source.find(ut::encodeUtf8(text)) != source.npos;
        });
    };
    eraseThoseIn(body);
    std::wstring said;
    for (const platen::Assumption& assumption : result.assumptions) {
        said += assumption.taken + L'\n' + assumption.path + L'\n';
    }
    std::erase_if(texts, [&](const std::wstring& text) { return said.find(text) != said.npos; });
    if (!texts.empty() && !file.empty()) {
        eraseThoseIn(file);
        eraseThoseIn(textsIn(file));
    }
    return texts;
}

/// Repairs of the damaged file pass the check, and everything in them is from somewhere.
/// `file` is what there is to read beside `body`.
void expectHonest(const std::string& damaged, const std::string& body, const std::string& file,
                  std::size_t& repaired) {
    const platen::RepairResult result = platen::repair(damaged, {.most = 1000000});
    if (!result) {
        EXPECT_NE(result.reason, "");
        return;
    }
    ++repaired;
    PiaInput input;
    ASSERT_TRUE(result.form == platen::FileForm::BodyText ? input.openBody(result.bytes)
                                                          : input.openBytes(result.bytes));
    const platen::CheckResult check = platen::checkInput(input);
    ASSERT_NE(check.verdict, platen::Verdict::Errors) << foundIn(check);
    ASSERT_THAT(inventedIn(result, *input.root(), body, file), testing::IsEmpty());
    // What was repaired has nothing left to repair.
    const platen::RepairResult again = platen::repair(result.bytes);
    for (const platen::Assumption& assumption : again.assumptions) {
        ASSERT_EQ(assumption.code, platen::RepairCode::LineFull) << platen::describe(assumption);
    }
    // What is safe loses nothing.
    const platen::RepairResult fixed = platen::repair(damaged, {.safeOnly = true});
    ASSERT_TRUE(fixed.losses.empty());
    ASSERT_TRUE(std::ranges::all_of(fixed.assumptions, [](const platen::Assumption& assumption) {
        return platen::isSafe(assumption.code);
    }));
}

TEST(RepairOfRandomDamage, NeverInventsAndPassesTheCheck) {
    constexpr unsigned rounds = 200;
    std::size_t containers = 0;
    std::size_t bodies = 0;
    for (unsigned seed = 0; seed < rounds; ++seed) {
        SCOPED_TRACE(seed);
        RandomDocuments chance(seed);
        const auto [body, kind] = randomDocument(chance);
        std::string file = fileAround(body, kind);
        std::string text = body;
        for (std::size_t count = 1 + chance.below(4); count > 0; --count) {
            damage(file, chance);
            damage(text, chance);
        }
        expectHonest(file, body, file, containers);
        expectHonest(fileAround(text, kind), text, {}, bodies);
        if (HasFatalFailure()) {
            return;
        }
    }
    // Most of what is damaged a little comes back.
    EXPECT_GT(containers, rounds / 2);
    EXPECT_GT(bodies, rounds * 2 / 3);
}

}  // namespace
