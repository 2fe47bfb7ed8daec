#include "host/interface/host.h"

#include "platform/liblingua.h"

namespace quillet {
namespace {

const HostApi* theHost = nullptr;
LingDomain* messageDomain = nullptr;

}  // namespace

const HostApi& hostApi() {
    return *theHost;
}

const char* translate(const char* messageId) {
    return LINGgettext(messageDomain, messageId);
}

void openHost(const HostApi* api) {
    theHost = api;
    messageDomain = LINGopenmsgdom("quillet", api->hostLanguage());
}

int closeHost() {
    LingDomain* const domain = messageDomain;
    messageDomain = nullptr;
    return LINGclosemsgdom(domain);
}

}  // namespace quillet
