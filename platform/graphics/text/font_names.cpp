#include "platform/graphics/text/font_names.h"

#include <fontconfig/fontconfig.h>

#include <algorithm>
#include <map>
#include <memory>
#include <mutex>

#include "platform/base/log.h"
#include "platform/graphics/text/font_configuration.h"
#include "platform/graphics/text/utf8_cut.h"

namespace platform {
namespace {

constexpr const char* kCommonFamily = "sans-serif";

struct DestroyPattern {
    void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
};
struct DestroySet {
    void operator()(FcFontSet* set) const { FcFontSetDestroy(set); }
};
using PatternPtr = std::unique_ptr<FcPattern, DestroyPattern>;

const FcChar8* AsFc(const char* text) {
    return reinterpret_cast<const FcChar8*>(text);
}
const char* FromFc(const FcChar8* text) {
    return reinterpret_cast<const char*>(text);
}

// The best face that the shaping library can use; faces in outdated formats are passed over.
PatternPtr Match(const std::string& family, const char* language) {
    const PatternPtr wanted(FcPatternCreate());
    if (!wanted) return nullptr;
    FcPatternAddString(wanted.get(), FC_FAMILY, AsFc(family.c_str()));
    if (language != nullptr) FcPatternAddString(wanted.get(), FC_LANG, AsFc(language));
    FcConfigSubstitute(FontConfiguration(), wanted.get(), FcMatchPattern);
    FcDefaultSubstitute(wanted.get());
    FcResult result = FcResultNoMatch;
    const std::unique_ptr<FcFontSet, DestroySet> faces(
        FcFontSort(FontConfiguration(), wanted.get(), FcFalse, nullptr, &result));
    if (!faces) return nullptr;
    for (int i = 0; i < faces->nfont; ++i) {
        FcChar8* format = nullptr;
        if (FcPatternGetString(faces->fonts[i], FC_FONTFORMAT, 0, &format) != FcResultMatch) continue;
        const std::string_view name = FromFc(format);
        if (name != "TrueType" && name != "CFF") continue;
        FcPatternReference(faces->fonts[i]);
        return PatternPtr(faces->fonts[i]);
    }
    return nullptr;
}

bool HasFamily(const FcPattern* face, const std::string& family) {
    FcChar8* name = nullptr;
    for (int i = 0; FcPatternGetString(face, FC_FAMILY, i, &name) == FcResultMatch; ++i) {
        if (FcStrCmpIgnoreCase(name, AsFc(family.c_str())) == 0) return true;
    }
    return false;
}

std::string FirstFamily(const FcPattern* face, const std::string& otherwise) {
    FcChar8* name = nullptr;
    if (FcPatternGetString(face, FC_FAMILY, 0, &name) != FcResultMatch) return otherwise;
    return FromFc(name);
}

bool Speaks(const FcPattern* face, const char* language) {
    FcLangSet* languages = nullptr;
    return FcPatternGetLangSet(face, FC_LANG, 0, &languages) == FcResultMatch &&
           FcLangSetHasLang(languages, AsFc(language)) == FcLangEqual;
}

// Faces that systems elsewhere bring along under Latin names, in lower case.
const char* LanguageOfKnownFace(std::string_view lower) {
    static constexpr struct {
        std::string_view name;
        const char* language;
    } kFaces[] = {
        {"simsun", "zh-cn"},
        {"nsimsun", "zh-cn"},
        {"simhei", "zh-cn"},
        {"simkai", "zh-cn"},
        {"kaiti", "zh-cn"},
        {"fangsong", "zh-cn"},
        {"dengxian", "zh-cn"},
        {"microsoft yahei", "zh-cn"},
        {"microsoft yahei ui", "zh-cn"},
        {"mingliu", "zh-tw"},
        {"pmingliu", "zh-tw"},
        {"microsoft jhenghei", "zh-tw"},
        {"ms gothic", "ja"},
        {"ms pgothic", "ja"},
        {"ms mincho", "ja"},
        {"meiryo", "ja"},
        {"yu gothic", "ja"},
        {"gulim", "ko"},
        {"dotum", "ko"},
        {"batang", "ko"},
        {"malgun gothic", "ko"},
    };
    const auto found = std::find_if(std::begin(kFaces), std::end(kFaces),
                                    [lower](const auto& face) { return face.name == lower; });
    return found != std::end(kFaces) ? found->language : nullptr;
}

// The language that a face is made for, as far as its name tells; null for none in particular.
const char* LanguageOfName(const std::string& family) {
    std::string lower = family;
    for (char& c : lower) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    if (const char* known = LanguageOfKnownFace(lower)) return known;
    const char* language = nullptr;
    const auto* at = AsFc(family.c_str());
    auto left = static_cast<int>(family.size());
    FcChar32 character = 0;
    for (int size = 0; left > 0 && (size = FcUtf8ToUcs4(at, &character, left)) > 0;
         at += size, left -= size) {
        if (character >= 0x3040 && character <= 0x30FF) return "ja";
        if (character >= 0xAC00 && character <= 0xD7A3) return "ko";
        if (character >= 0x3400 && character <= 0x9FFF) language = "zh-cn";
    }
    return language;
}

std::string Resolve(const std::string& family) {
    const PatternPtr face = Match(family, nullptr);
    if (!face) return family;
    if (HasFamily(face.get(), family)) return family;
    // The configuration may know a replacement that fits.
    const char* language = LanguageOfName(family);
    if (language == nullptr || Speaks(face.get(), language)) return FirstFamily(face.get(), family);
    // At the sizes of captions the even strokes of these are easier to read, whatever the name says.
    const PatternPtr substitute = Match(kCommonFamily, language);
    return FirstFamily(substitute && Speaks(substitute.get(), language) ? substitute.get() : face.get(),
                       family);
}

}  // namespace

std::string ResolveFamily(std::string_view name) {
    // The time that the font configuration takes grows with the square of a name. No face has so long a one:
    // this much of it says what is not installed, and for which language.
    constexpr std::size_t kLongestName = 512;
    std::string family(StartOf(name.empty() ? kCommonFamily : name, kLongestName));
    // A list separator would make one name several.
    std::replace(family.begin(), family.end(), ',', ' ');

    constexpr std::size_t kMostRemembered = 256;
    struct Resolved {
        std::mutex mutex;
        std::map<std::string, std::string, std::less<>> families;
    };
    // Never destroyed: a host's static objects make fonts until the process ends.
    static Resolved* const resolved = new Resolved;
    const std::lock_guard lock(resolved->mutex);
    if (const auto found = resolved->families.find(family); found != resolved->families.end()) {
        return found->second;
    }
    if (resolved->families.size() >= kMostRemembered) resolved->families.clear();
    const std::string used = Resolve(family);
    if (used != family) LogMissing("font", "\"" + family + "\"", "not installed, \"" + used + "\" is used");
    return resolved->families[family] = used;
}

}  // namespace platform
