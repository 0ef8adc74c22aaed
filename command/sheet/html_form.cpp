// The sheet as a page that is printed.
#include <fmt/format.h>

#include "command/html/embedded_texts.h"
#include "command/html/html_text.h"
#include "command/sheet/keyboard_picture.h"
#include "command/sheet/sheet.h"

namespace zelutil::command::sheet {
namespace {

using html::escaped;

std::string legend() {
    return R"(<p class="legend"><svg class="sample" role="img" aria-label="Key with a thick border and a filled corner")"
           R"( viewBox="-3 -3 100 85"><rect class="key bound changed" x="0" y="0" width="94" height="79" rx="9"/>)"
           R"(<path class="mark" d="M91 3h-20l20 20z"/></svg>)"
           " A thick border and a filled corner mark what you have changed; in the tables it is said in words.</p>\n";
}

std::string linkTo(const Context& context, std::size_t number) {
    return fmt::format("<li><a href=\"#context-{}\">{}</a></li>", number, escaped(context.name));
}

std::string navigationTo(const Sheet& sheet) {
    std::string list;
    for (std::size_t number = 0; number < sheet.size(); ++number) {
        list += linkTo(sheet[number], number);
    }
    return list.empty() ? "" : "<nav aria-label=\"Contexts\"><ul>" + list + "</ul></nav>\n";
}

std::string figureOf(const Layer& layer, const std::string& id, const std::string& contextName) {
    return fmt::format("<figure><figcaption>{}</figcaption>\n{}</figure>\n", titleOf(layer),
                       pictureOf(layer, id, contextName));
}

/// Returns a note on the shortcuts that no picture has.
std::string noteOn(const std::vector<const Entry*>& elsewhere) {
    std::string list;
    for (const Entry* const entry : elsewhere) {
        list += (list.empty() ? "" : ", ") + ("<kbd>" + escaped(entry->shortcut) + "</kbd>");
    }
    return list.empty()
               ? ""
               : "<p>These are on no picture, because the keyboard drawn lacks a key of theirs: " + list + ".</p>\n";
}

std::string rowOf(const Entry& entry) {
    const std::string shortcut = entry.shortcut.empty() ? "none" : "<kbd>" + escaped(entry.shortcut) + "</kbd>";
    return fmt::format("<tr{}><th scope=\"row\">{}</th><td>{}</td><td>{}</td><td>{}</td></tr>\n",
                       entry.changed ? " class=\"changed\"" : "", shortcut, escaped(entry.name), escaped(entry.command),
                       escaped(remarkOf(entry)));
}

std::string tableOf(const Context& context) {
    std::string table = fmt::format("<table><caption>All shortcuts of {}</caption>\n", escaped(context.name));
    table +=
        "<thead><tr><th scope=\"col\">Shortcut</th><th scope=\"col\">Action</th>"
        "<th scope=\"col\">Command</th><th scope=\"col\">Remark</th></tr></thead>\n<tbody>\n";
    for (const Entry& entry : context.entries) {
        table += rowOf(entry);
    }
    return table + "</tbody></table>\n";
}

std::string sectionOf(const Context& context, std::size_t number) {
    const Layers layers = layersOf(context);
    std::string section = fmt::format("<section aria-labelledby=\"context-{0}\">\n<h2 id=\"context-{0}\">{1}</h2>\n",
                                      number, escaped(context.name));
    for (std::size_t layer = 0; layer < layers.layers.size(); ++layer) {
        section += figureOf(layers.layers[layer], fmt::format("keys-{}-{}", number, layer), context.name);
    }
    return section + noteOn(layers.elsewhere) + tableOf(context) + "</section>\n";
}

}  // namespace

std::string htmlOf(const Sheet& sheet) {
    std::string page = fmt::format(
        "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
        "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src 'unsafe-inline'\">\n"
        "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
        "<title>Keyboard shortcuts</title>\n<style>\n{}</style>\n</head>\n<body>\n"
        "<header><h1>Keyboard shortcuts</h1>\n{}</header>\n",
        html::kSheetCss, legend());
    page += navigationTo(sheet) + "<main>\n";
    for (std::size_t number = 0; number < sheet.size(); ++number) {
        page += sectionOf(sheet[number], number);
    }
    return page + "</main>\n</body>\n</html>\n";
}

}  // namespace zelutil::command::sheet
