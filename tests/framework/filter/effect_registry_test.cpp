// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/filter/effect_registry.h"

#include <gtest/gtest.h>

#include "framework/filter/filter_guids.h"
#include "framework/filter/nle_opengl_filter.h"
#include "tests/support/filter_descriptions.h"

namespace kelmo {
namespace {

using test::AddParam;
using test::MakeInfo;

class ByType : public NLEOpenGLFilter {
    using NLEOpenGLFilter::NLEOpenGLFilter;
};

class ByGuid : public NLEOpenGLFilter {
    using NLEOpenGLFilter::NLEOpenGLFilter;
};

class Sticker : public NLEOpenGLFilter {
    using NLEOpenGLFilter::NLEOpenGLFilter;
};

class WithSubGuid : public NLEOpenGLFilter {
public:
    WithSubGuid(std::shared_ptr<NLEFilterInfo> info, const char* sub)
        : NLEOpenGLFilter(std::move(info)), subGuid(sub ? sub : "none") {}
    std::string subGuid;
};

const bool registered =
    RegisterEffect("ByType", MakeEffect<ByType>, {"TestType"}) &&
    RegisterEffect("ByGuid", MakeEffect<ByGuid>, {"test-guid", "test-guid-2"}) &&
    RegisterEffect("WithSubGuid",
                   [](std::shared_ptr<NLEFilterInfo> info, const char* sub) {
                       return std::make_unique<WithSubGuid>(std::move(info), sub);
                   },
                   {"TestSub"});

std::string NameOf(const NLEOpenGLFilter* filter) {
    if (!filter) return "null";
    if (dynamic_cast<const ByType*>(filter)) return "ByType";
    if (dynamic_cast<const ByGuid*>(filter)) return "ByGuid";
    if (dynamic_cast<const Sticker*>(filter)) return "Sticker";
    return "plain";
}

TEST(CreateFilterTest, TypeBeatsGuidAndAnUnknownTypeFallsThrough) {
    ASSERT_TRUE(registered);
    struct {
        const char* type;
        const char* guid;
        const char* expected;
    } const cases[] = {{"TestType", "test-guid", "ByType"},
                       {"Unknown", "test-guid-2", "ByGuid"},
                       {"", "test-guid", "ByGuid"},
                       {"TestType", "unknown", "ByType"},
                       {"", "unknown", "plain"},
                       {"testtype", "TEST-GUID", "plain"}};
    for (const auto& c : cases) {
        const auto info = MakeInfo(c.guid);
        info->typeName = c.type;
        EXPECT_EQ(NameOf(CreateFilter(info).get()), c.expected) << c.type << " " << c.guid;
    }
    EXPECT_EQ(CreateFilter(nullptr), nullptr);
}

TEST(CreateFilterTest, AFactoryGetsTheSecondClassKeyOrNull) {
    const auto info = MakeInfo("unknown");
    info->typeName = "TestSub";
    EXPECT_EQ(dynamic_cast<WithSubGuid&>(*CreateFilter(info)).subGuid, "none");
    info->subGuid = "sub";
    EXPECT_EQ(dynamic_cast<WithSubGuid&>(*CreateFilter(info)).subGuid, "sub");
}

TEST(CreateFilterTest, AStickerPathMakesAStickerFilterAndNamesItsParameter) {
    // Stands in for the class of the library, which other test programs link.
    RegisterEffect("Sticker", MakeEffect<Sticker>, {kStickerMasterGuid});
    const auto info = MakeInfo("unknown");
    AddParam(*info, "first", NLEParamValue::Float(0.0F));
    NLEFilterParams& path = AddParam(*info, "path", NLEParamValue::Text("a.zip"));
    path.alias = "stickerPath";
    EXPECT_EQ(NameOf(CreateFilter(info).get()), "Sticker");
    EXPECT_EQ(path.name, "stickerPath");

    info->typeName = "TestType";
    EXPECT_EQ(NameOf(CreateFilter(info).get()), "ByType") << "a registered type still wins";
}

TEST(EffectRegistryTest, TellsKeysThatTwoClassesClaim) {
    const std::size_t before = EffectRegistry::Instance().Conflicts().size();
    RegisterEffect("ByGuid", MakeEffect<ByGuid>, {"test-twice"});
    RegisterEffect("ByGuid", MakeEffect<ByGuid>, {"test-twice"});
    EXPECT_EQ(EffectRegistry::Instance().Conflicts().size(), before);
    RegisterEffect("ByType", MakeEffect<ByType>, {"test-twice"});
    EXPECT_EQ(EffectRegistry::Instance().Conflicts().size(), before + 1);
    EXPECT_EQ(EffectRegistry::Instance().Conflicts().back(), "test-twice");
}

}  // namespace
}  // namespace kelmo
