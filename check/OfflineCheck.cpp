#include "check/OfflineCheck.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <thread>
#include <unordered_map>
#include <utility>

#include "platform/FolderTree.h"
#include "text/CountText.h"
#include "text/HtmlDocument.h"
#include "text/PageLinks.h"
#include "text/Strings.h"

namespace vantorin {

namespace {

// Broken targets counted before the less common half is dropped: every target
// of an ordinary mirror is counted exactly, and a mirror broken everywhere
// still costs no more than this.
constexpr std::size_t kTallyLimit = 1 << 14;
// Pages read between two merges of their results, the threads reading them
// at most, and the file names each thread keeps.
constexpr std::size_t kBatch = 256;
constexpr std::size_t kMaxLanes = 4;
constexpr std::size_t kCachedNames = 1 << 17;

bool IsAsciiLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// "http:", "mailto:", "javascript:": a letter, then letters, digits, "+", "-"
// or "." up to the ":".
bool HasScheme(std::string_view link) {
    if (link.empty() || !IsAsciiLetter(link[0])) return false;
    for (char c : link.substr(1)) {
        if (c == ':') return true;
        if (!IsAsciiLetter(c) && !(c >= '0' && c <= '9') && c != '+' && c != '-' && c != '.')
            return false;
    }
    return false;
}

// The links of the page at a native path, or nothing with the system's reason.
std::optional<std::vector<std::string>> LinksOfPageFile(const std::string& nativePath,
                                                        std::string& reason) {
    const std::optional<std::string> bytes = ReadFileStart(nativePath, kMaxPageBytes, reason);
    if (!bytes) return std::nullopt;
    return LinksOfHtml(*bytes);
}

int HexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// "%20" -> " "; a "%" without two hex digits stays as it is.
std::string PercentDecoded(std::string_view s) {
    std::string out;
    out.reserve(s.size());
    for (std::size_t i = 0; i < s.size(); ++i) {
        const int high = s[i] == '%' && i + 2 < s.size() ? HexDigit(s[i + 1]) : -1;
        const int low = high >= 0 ? HexDigit(s[i + 2]) : -1;
        if (low < 0) {
            out += s[i];
            continue;
        }
        out += static_cast<char>(high * 16 + low);
        i += 2;
    }
    return out;
}

enum class LinkKind { SamePage, Online, Local };

struct Target {
    LinkKind kind = LinkKind::SamePage;
    bool outside = false;  // above the checked folder, or root-relative
    bool folder = false;   // written as a folder: "sub/", ".", ".."
    std::string path;      // below the checked folder; else where it points
};

// Where a browser that opened the page from disk looks for the link's file.
Target Resolve(std::string_view pageFolder, std::string link) {
    Target target;
    std::replace(link.begin(), link.end(), '\\', '/');
    if (HasScheme(link) || link.starts_with("//")) {
        target.kind = LinkKind::Online;
        return target;
    }
    link.resize(std::min(link.find('#'), link.size()));
    link.resize(std::min(link.find('?'), link.size()));
    if (link.empty()) return target;
    target.kind = LinkKind::Local;
    const std::string decoded = PercentDecoded(link);
    if (decoded.front() == '/') {
        target.outside = true;
        target.path = decoded;
        return target;
    }
    std::vector<std::string_view> names;
    int climbed = 0;
    auto walk = [&](std::string_view path) {
        for (std::size_t at = 0; at <= path.size();) {
            const std::size_t end = std::min(path.find('/', at), path.size());
            const std::string_view name = path.substr(at, end - at);
            target.folder = name.empty() || name == "." || name == "..";
            if (name == "..") {
                if (names.empty())
                    ++climbed;
                else
                    names.pop_back();
            } else if (!target.folder) {
                names.push_back(name);
            }
            at = end + 1;
        }
    };
    if (!pageFolder.empty()) walk(pageFolder);
    walk(decoded);
    target.outside = climbed > 0;
    for (int i = 0; i < climbed; ++i) target.path += "../";
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (i > 0) target.path += '/';
        target.path += names[i];
    }
    return target;
}

// The broken links by the file they looked for, with the first link that
// looked for each.
class BrokenTally {
public:
    void Add(const std::string& page, const std::string& link, const std::string& lookedFor) {
        auto [it, fresh] = targets_.try_emplace(lookedFor);
        if (fresh) it->second = {0, seen_++, {page, link, lookedFor}};
        ++it->second.count;
        if (targets_.size() > kTallyLimit) Keep(kTallyLimit / 2);
    }

    // The first links of the `n` most common targets, ties in the order met;
    // their links are taken off `elsewhere`.
    std::vector<BrokenLink> MostCommon(std::size_t n, std::int64_t& elsewhere) {
        Keep(n);
        std::vector<BrokenLink> links;
        for (const auto& it : Ranked()) {
            elsewhere -= it->second.count;
            links.push_back(std::move(it->second.example));
        }
        return links;
    }

private:
    struct Entry {
        std::int64_t count = 0;
        std::int64_t order = 0;
        BrokenLink example;
    };
    using Targets = std::unordered_map<std::string, Entry>;

    std::vector<Targets::iterator> Ranked() {
        std::vector<Targets::iterator> ranked;
        ranked.reserve(targets_.size());
        for (auto it = targets_.begin(); it != targets_.end(); ++it) ranked.push_back(it);
        std::sort(ranked.begin(), ranked.end(), [](const auto& a, const auto& b) {
            return std::pair(-a->second.count, a->second.order) <
                   std::pair(-b->second.count, b->second.order);
        });
        return ranked;
    }

    void Keep(std::size_t n) {
        const std::vector<Targets::iterator> ranked = Ranked();
        for (std::size_t i = n; i < ranked.size(); ++i) targets_.erase(ranked[i]);
    }

    Targets targets_;
    std::int64_t seen_ = 0;
};

// What the names below the checked folder are, read a folder at a time and
// kept: the pages of a mirror link into the same folders again and again.
// Past kCachedNames names, the folders kept are dropped and read again.
class KindCache {
public:
    PathKind Of(const std::string& root, std::string_view relative) {
        const std::size_t slash = relative.rfind('/');
        const bool inFolder = slash != std::string_view::npos;
        std::string folder(relative.substr(0, inFolder ? slash : 0));
        auto it = folders_.find(folder);
        if (it == folders_.end()) {
            if (names_ > kCachedNames) {
                folders_.clear();
                names_ = 0;
            }
            Names names;
            for (auto& [name, kind] : ListFolder(root + "/" + folder).value_or(Listing()))
                names.emplace(std::move(name), kind);
            names_ += names.size() + 1;
            it = folders_.emplace(std::move(folder), std::move(names)).first;
        }
        const auto hit = it->second.find(std::string(relative.substr(inFolder ? slash + 1 : 0)));
        return hit == it->second.end() ? PathKind::None : hit->second;
    }

private:
    using Listing = std::vector<std::pair<std::string, PathKind>>;
    using Names = std::unordered_map<std::string, PathKind>;
    std::unordered_map<std::string, Names> folders_;
    std::size_t names_ = 0;
};

// What one page's links came to.
struct PageResult {
    std::string unreadable;  // the reason, when the page could not be read
    std::int64_t local = 0, resolved = 0, online = 0;
    std::vector<std::pair<std::string, std::string>> broken;  // link, looked for
};

// Pages are read in batches, one page at a time on each lane (a thread with
// its own cache), and their results are added in the batches' order, so the
// report is the same however the lanes ran.
class Checker {
public:
    explicit Checker(std::string folder)
        : root_(std::move(folder)),
          lanes_(std::clamp<std::size_t>(std::thread::hardware_concurrency(), 1, kMaxLanes)) {
        while (root_.size() > 1 && root_.back() == '/') root_.pop_back();
    }

    const std::string& Root() const { return root_; }

    void Page(std::string relative) {
        batch_.push_back(std::move(relative));
        if (batch_.size() == kBatch) Flush();
    }

    void Unreadable(const std::string& relative, const std::string& reason) {
        if (report_.firstUnreadable.size() < OfflineReport::kUnreadableShown)
            report_.firstUnreadable.push_back(relative + ": " + reason);
        ++report_.unreadable;
    }

    OfflineReport Finish() {
        Flush();
        report_.brokenNotShown = report_.localLinks - report_.resolved;
        report_.broken = tally_.MostCommon(OfflineReport::kShown, report_.brokenNotShown);
        return std::move(report_);
    }

private:
    void Flush() {
        std::vector<PageResult> results(batch_.size());
        auto run = [&](std::size_t lane) {
            for (std::size_t i = lane; i < batch_.size(); i += lanes_.size())
                results[i] = Read(batch_[i], lanes_[lane]);
        };
        std::vector<std::thread> helpers;
        for (std::size_t lane = 1; lane < lanes_.size() && lane < batch_.size(); ++lane)
            helpers.emplace_back(run, lane);
        run(0);
        for (std::thread& helper : helpers) helper.join();
        for (std::size_t i = 0; i < batch_.size(); ++i) {
            PageResult& r = results[i];
            if (!r.unreadable.empty()) Unreadable(batch_[i], r.unreadable);
            report_.localLinks += r.local;
            report_.resolved += r.resolved;
            report_.online += r.online;
            for (const auto& [link, lookedFor] : r.broken) tally_.Add(batch_[i], link, lookedFor);
        }
        batch_.clear();
    }

    PageResult Read(const std::string& relative, KindCache& kinds) const {
        PageResult result;
        const auto links = LinksOfPageFile(Below(relative), result.unreadable);
        if (!links) return result;
        const std::size_t slash = relative.rfind('/');
        const std::string_view folder =
            std::string_view(relative).substr(0, slash == std::string::npos ? 0 : slash);
        for (const std::string& link : *links) {
            Target target = Resolve(folder, link);
            if (target.kind == LinkKind::Online) ++result.online;
            if (target.kind != LinkKind::Local) continue;
            ++result.local;
            if (Found(target, kinds))
                ++result.resolved;
            else
                result.broken.emplace_back(link, std::move(target.path));
        }
        return result;
    }

    std::string Below(const std::string& relative) const { return root_ + "/" + relative; }

    // True when the target is a file, or a folder holding "index.html"; the
    // target's path becomes the index file's when a folder was looked in.
    bool Found(Target& target, KindCache& kinds) const {
        if (target.outside) return false;
        if (!target.folder) {
            const PathKind kind = kinds.Of(root_, target.path);
            if (kind != PathKind::Folder) return kind == PathKind::File;
        }
        target.path += target.path.empty() ? "index.html" : "/index.html";
        return kinds.Of(root_, target.path) == PathKind::File;
    }

    std::string root_;
    std::vector<KindCache> lanes_;
    std::vector<std::string> batch_;
    OfflineReport report_;
    BrokenTally tally_;
};

// Control characters of a hostile page's link would reach the terminal.
std::string Printable(std::string text) {
    for (char& c : text)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) c = '?';
    return text;
}

std::string Count(std::int64_t n) {
    return FormatThousands(std::to_string(n));
}

}  // namespace

bool IsPageName(std::string_view name) {
    const std::string lower =
        LCase(name.substr(name.size() - std::min<std::size_t>(name.size(), 6)));
    for (std::string_view ending : {".htm", ".html", ".shtm", ".shtml"})
        if (lower.ends_with(ending)) return true;
    return false;
}

OfflineReport CheckFolder(const std::string& folder) {
    Checker checker(folder);
    std::string reason;
    const bool listed = WalkFiles(
        checker.Root(),
        [&](const std::string& relative, const std::string& error) {
            if (!error.empty())
                checker.Unreadable(relative + "/", error);
            else if (IsPageName(relative))
                checker.Page(relative);
        },
        reason);
    OfflineReport report = checker.Finish();
    if (!listed) report.folderError = reason;
    return report;
}

OfflineReport CheckPages(const std::string& folder, std::vector<std::string> pages) {
    Checker checker(folder);
    const std::filesystem::path root = std::filesystem::path(checker.Root()).lexically_normal();
    std::vector<std::string> below;
    for (const std::string& page : pages) {
        std::string relative = std::filesystem::path(page)
                                   .lexically_normal()
                                   .lexically_relative(root)
                                   .generic_string();
        if (IsPageName(relative) && !relative.starts_with(".."))
            below.push_back(std::move(relative));
    }
    std::sort(below.begin(), below.end());
    below.erase(std::unique(below.begin(), below.end()), below.end());
    for (const std::string& page : below) checker.Page(page);
    return checker.Finish();
}

std::string SummaryLine(const OfflineReport& report) {
    return "Offline check: " + Count(report.resolved) + " of " + Count(report.localLinks) +
           " links between saved pages lead to a saved file; " + Count(report.online) +
           (report.online == 1 ? " leads online." : " lead online.");
}

std::vector<std::string> CheckReportLines(const OfflineReport& report) {
    std::vector<std::string> lines{SummaryLine(report)};
    for (const BrokenLink& broken : report.broken)
        lines.push_back(Printable(broken.page + " -> " + broken.link +
                                  " (looked for: " + broken.lookedFor + ")"));
    if (report.brokenNotShown > 0)
        lines.push_back("and " +
                        CountOf(report.brokenNotShown, "more broken link", "more broken links"));
    if (report.unreadable > 0) {
        lines.push_back(CountOf(report.unreadable, "page or folder", "pages or folders") +
                        " could not be read:");
        for (const std::string& entry : report.firstUnreadable)
            lines.push_back("  " + Printable(entry));
        const auto shown = static_cast<std::int64_t>(report.firstUnreadable.size());
        if (report.unreadable > shown)
            lines.push_back("  and " + Count(report.unreadable - shown) + " more");
    }
    return lines;
}

int CheckExitStatus(const OfflineReport& report) {
    if (!report.folderError.empty() || report.unreadable > 0) return 2;
    return report.resolved < report.localLinks ? 1 : 0;
}

}  // namespace vantorin
