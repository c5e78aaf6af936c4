#include "wire/ServerComplaint.h"

#include <algorithm>
#include <array>

namespace pobblewig {

namespace {

using enum ServerComplaint;

struct Wording {
    ServerComplaint complaint;
    QStringView text;
    /// Has to occur as well, if given.
    QStringView also = {};
    int onlyStatus = 0;
};

// The first match decides. Pictures come before tools: what refuses a picture may list its tools.
constexpr std::array wordings {
    // Elsewhere the same words tell that loading has failed.
    Wording { modelLoading, u"loading model", {}, 503 },
    Wording { modelLoading, u"currently loading", {}, 503 },
    Wording { modelLoading, u"model is loading", {}, 503 },
    Wording { contextOverflow, u"exceed_context_size" },
    Wording { contextOverflow, u"context_length_exceeded" },
    Wording { contextOverflow, u"maximum context length" },
    Wording { contextOverflow, u"maximum model length" },
    Wording { contextOverflow, u"context size", u"exceed" },
    Wording { contextOverflow, u"context window", u"exceed" },
    Wording { contextOverflow, u"context length", u"not enough" },
    Wording { contextOverflow, u"prompt is too long" },
    Wording { contextOverflow, u"token count", u"exceeds" },
    Wording { contextOverflow, u"too large for model", u"context" },
    Wording { contextOverflow, u"reduce the length of the" },
    Wording { contextOverflow, u"tokens + `max_new_tokens" },
    Wording { imagesUnsupported, u"image input", u"not support" },
    Wording { imagesUnsupported, u"not support image" },
    Wording { imagesUnsupported, u"not support vision" },
    Wording { imagesUnsupported, u"that support image" },
    Wording { imagesUnsupported, u"required for image input" },
    Wording { imagesUnsupported, u"image_url", u"unknown variant" },
    Wording { imagesUnsupported, u"image_url", u"only supported by" },
    Wording { imagesUnsupported, u"not a multimodal model" },
    Wording { imagesUnsupported, u"at most 0 image" },
    Wording { toolsUnsupported, u"tools param requires" },
    Wording { toolsUnsupported, u"not support tool" },
    Wording { toolsUnsupported, u"not support function" },
    Wording { toolsUnsupported, u"that support tool use" },
    Wording { toolsUnsupported, u"tools are not supported" },
    Wording { toolsUnsupported, u"tool choice requires" },
    Wording { modelUnknown, u"model_not_found" },
    Wording { modelUnknown, u"unknown model" },
    Wording { modelUnknown, u"no such model" },
    Wording { modelUnknown, u"invalid model" },
    Wording { modelUnknown, u"not a valid model" },
    Wording { modelUnknown, u"model", u"not found", 404 },
    Wording { modelUnknown, u"model", u"does not exist" },
};

} // namespace

ServerComplaint ServerComplaintLogic::complaint(int status, const QString& body)
{
    const auto matches = [&](const Wording& wording) {
        return (wording.onlyStatus == 0 || wording.onlyStatus == status)
            && body.contains(wording.text, Qt::CaseInsensitive)
            && body.contains(wording.also, Qt::CaseInsensitive);
    };
    const auto* const known = std::ranges::find_if(wordings, matches);
    return known == wordings.end() ? plain : known->complaint;
}

} // namespace pobblewig
