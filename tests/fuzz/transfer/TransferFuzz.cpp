// Any bytes as push settings and as files of the state folder: refused, or they name the server and the folder that
// they say, and nothing else.
#include "../Require.hpp"

#include "FarEnd.hpp"
#include "Records.hpp"
#include "RunReport.hpp"
#include "Text.hpp"

#include <filesystem>
#include <unistd.h>
#include <vector>

using namespace transfer;

namespace {

const StateFolder& folder() {
    static const StateFolder* const state = [] {
        setenv("ZPO_STATE_DIR", ("/dev/shm/transfer_fuzz." + std::to_string(getpid())).c_str(), 1);
        std::atexit([] { std::filesystem::remove_all(getenv("ZPO_STATE_DIR")); });
        const auto* const made = new StateFolder;
        made->create();
        return made;
    }();
    return *state;
}

/// What libcurl makes of the URL: it must be what was meant.
std::string partOf(const std::string& url, CURLUPart part) {
    CURLU* const handle = curl_url();
    char* text = nullptr;
    require(curl_url_set(handle, CURLUPART_URL, url.c_str(), CURLU_PATH_AS_IS) == CURLUE_OK, "a URL");
    curl_url_get(handle, part, &text, part == CURLUPART_PATH ? CURLU_URLDECODE : 0U);
    const std::string result = text == nullptr ? "" : text;
    curl_free(text);
    curl_url_cleanup(handle);
    return result;
}

void tryUrl(const PushSettings& settings) {
    const std::string path = settings.pathOf("CDR-1.csv");
    require(("/" + path + "/").find("/../") == std::string::npos, "no way upwards");
    std::string url;
    try {
        url = urlOf(settings, path);
    } catch (const Failure&) {
        return;
    }
    const bool relativeSftp = settings.address.protocol == Protocol::Sftp && path.front() != '/';
    const std::string start = relativeSftp ? "/~/" : (settings.address.protocol == Protocol::Sftp ? "" : "/");
    require(!holdsControl(url) && url.find(' ') == std::string::npos, "one word");
    require(partOf(url, CURLUPART_PATH) == start + path, "the path");
    require(partOf(url, CURLUPART_PORT) == std::to_string(settings.address.port), "the port");
    require(partOf(url, CURLUPART_USER).empty(), "no user in it");
}

void tryStateFiles(const std::string& text) {
    for (const char* const name : {"sent", "current", "last-run", "known_hosts"}) {
        saveFile(folder() / name, text);
    }
    const SentFiles sent(folder());
    require(!sent.holds({"", "never there", 1, 1}) || text.find("never there") != std::string::npos,
            "only what is there");
    const CurrentUpload current = CurrentUpload::load(folder());
    require(current.partPath.empty() || text.find(current.partPath) != std::string::npos, "only what is there");
    const RunReport report = RunReport::load(folder());
    report.save(folder());
    require(RunReport::load(folder()).failures.size() <= report.failures.size(), "a report is saved");
    const Address address{Protocol::Sftp, "host", 22};
    trustHostKey(folder() / "known_hosts", address, {text});
    require(isKnownHost(folder() / "known_hosts", address), "a key is kept");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(textOf(data, size));
    std::vector<std::string> texts(1);
    for (const char character : text) {
        if (character == '|') {
            texts.emplace_back();
        } else if (character != '\0') {
            texts.back() += character;
        }
    }
    texts.resize(std::max<std::size_t>(4, texts.size()));
    try {
        const PushSettings settings = checkedSettings({0, texts[0], texts[1], texts[2], texts[3]});
        tryUrl(settings);
    } catch (const Failure& failure) {
        require(!holdsControl(failure.what()), "a reason is one line");
    }
    tryStateFiles(text);
    return 0;
}
