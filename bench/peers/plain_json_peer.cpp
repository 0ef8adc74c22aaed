#include "peers/plain_json_peer.h"

#include "peers/plain_rapidjson.h"

namespace zelutil::bench::peers {

std::uint64_t parseAlone(const std::string& defaultsText, const std::string& userText) {
    plain_rapidjson::Document defaults;
    defaults.Parse(defaultsText.data(), defaultsText.size());
    plain_rapidjson::Document user;
    user.Parse(userText.data(), userText.size());
    if (defaults.HasParseError() || user.HasParseError()) {
        return 0;
    }
    const auto& groups = defaults["meta"];
    const auto& sections = groups[groups.Size() - 1]["children"];
    const auto& settings = sections[sections.Size() - 1]["defaultsettings"];
    return settings[settings.Size() - 1]["value"].GetStringLength();
}

std::uint64_t parseActionsAlone(const std::string& text) {
    plain_rapidjson::Document document;
    document.Parse(text.data(), text.size());
    if (document.HasParseError()) {
        return 0;
    }
    const auto& actions = document["actions"];
    return actions[actions.Size() - 1]["shortcut"].GetStringLength();
}

std::string parseAndWrite(const std::string& text) {
    plain_rapidjson::Document document;
    document.Parse(text.data(), text.size());
    plain_rapidjson::StringBuffer buffer;
    plain_rapidjson::PrettyWriter<plain_rapidjson::StringBuffer> writer(buffer);
    document.Accept(writer);
    return {buffer.GetString(), buffer.GetSize()};
}

}  // namespace zelutil::bench::peers
