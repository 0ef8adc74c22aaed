"use strict";

(() => {
    const data = JSON.parse(document.getElementById("data").textContent);
    const element = (id) => document.getElementById(id);
    const many = (number, word) => `${number.toLocaleString("en")} ${word}${number === 1 ? "" : "s"}`;

    const fileNames = {defaults: data.files.defaults.path, user: data.files.user.path};
    const placeOf = (setting) => (setting.userAt ? `user ${setting.userAt.join(":")}` : setting.at ? `defaults ${setting.at.join(":")}` : "");
    const originOf = (setting) => (setting.user ? "user" : "shipped");

    // --- Settings ------------------------------------------------------------------------------------------------

    const settingColumns = [
        {title: "Name", width: "35%", text: (setting) => setting.name},
        {title: "Value", width: "20%", text: (setting) => setting.value || '""', kind: (setting) => (setting.user ? "changed" : "")},
        {title: "Default", width: "20%", text: (setting) => setting.default || '""'},
        {title: "Origin", width: "11%", text: originOf},
        {title: "Position", width: "14%", text: placeOf},
    ];

    function entry(list, term, ...texts) {
        if (texts.some((text) => text !== "")) {
            list.push(make("dt", {}, term), ...texts.map((text) => make("dd", {}, text)));
        }
    }

    function showDetail(setting) {
        const list = [];
        entry(list, "Name", setting.name);
        entry(list, "Also found as", setting.bare.join(", "));
        entry(list, "Value", setting.value || '""');
        entry(list, "Default", setting.default || '""');
        entry(list, "Origin", setting.user ? "set by the user" : "shipped");
        entry(list, "Set at", setting.userAt ? `${fileNames.user}:${setting.userAt.join(":")}` : "");
        entry(list, "Defined at", setting.at ? `${fileNames.defaults}:${setting.at.join(":")}` : "");
        entry(list, "Notes", ...setting.notes);
        element("detail").replaceChildren(make("dl", {}, ...list));
    }

    const changedSettings = data.settings.filter((setting) => setting.user);
    const settingTexts = data.settings.map((setting) =>
        [...settingColumns.map((column) => column.text(setting)), ...setting.bare].join("\n").toLowerCase());
    const allSettings = new Grid(element("all-settings"), "All settings", settingColumns, showDetail);

    function termsOf(input) { return input.value.toLowerCase().split(/\s+/).filter((term) => term !== ""); }

    function isIn(section, wanted) { return wanted === "" || section === wanted || section.startsWith(`${wanted}::`); }

    function filterSettings() {
        const terms = termsOf(element("search"));
        const section = element("section").value;
        const onlyChanged = element("only-changed").checked;
        const rows = data.settings.filter((setting, number) =>
            (!onlyChanged || setting.user) && isIn(setting.section, section) &&
            terms.every((term) => settingTexts[number].includes(term)));
        allSettings.show(rows, terms);
        element("settings-count").textContent = `${many(rows.length, "setting")} of ${data.settings.length.toLocaleString("en")}`;
        element("detail").replaceChildren(make("p", {}, rows.length ? "Choose a row to see all about it." : "Nothing is found."));
    }

    // --- Sections ------------------------------------------------------------------------------------------------

    function countSections() {
        const sections = new Map(data.sections.map((path) => [path, {path, settings: 0, changed: 0}]));
        for (const setting of data.settings) {
            const section = sections.get(setting.section);
            if (section) {
                section.settings += 1;
                section.changed += setting.user ? 1 : 0;
            }
        }
        return [...sections.values()];
    }

    function goToSection(path) {
        element("section").value = path;
        element("search").value = "";
        element("only-changed").checked = false;
        filterSettings();
        element("search").focus();
    }

    function tableOf(caption, titles, rows) {
        const heads = titles.map((title) => make("th", {scope: "col"}, title));
        return make("table", {className: "plain"}, make("caption", {}, caption),
                    make("thead", {}, make("tr", {}, ...heads)), make("tbody", {}, ...rows));
    }

    function showSections() {
        const rows = countSections().map((section) => {
            const button = make("button", {type: "button", "aria-label": `Show ${section.path}`}, "Show");
            button.addEventListener("click", () => goToSection(section.path));
            element("section").append(make("option", {value: section.path}, section.path));
            return make("tr", {}, make("th", {scope: "row"}, section.path), make("td", {className: "number"}, String(section.settings)),
                        make("td", {className: "number"}, String(section.changed)), make("td", {}, section.settings ? button : ""));
        });
        element("section-table").append(tableOf(many(rows.length, "section"), ["Section", "Settings", "Changed", "Settings of it"], rows));
    }

    // --- Shortcuts -----------------------------------------------------------------------------------------------

    const actionColumns = [
        {title: "Context", width: "10%", text: (action) => action.context},
        {title: "Shortcut", width: "12%", text: (action) => action.shortcut || "none", kind: (action) => (action.changedByUser ? "changed" : "")},
        {title: "Action", width: "15%", text: (action) => action.name},
        {title: "Command", width: "16%", text: (action) => action.command},
        {title: "Without changes", width: "12%", text: (action) => action.shortcutWithoutUser || "none"},
        {title: "Menu", width: "6%", text: (action) => (action.inMenu ? "yes" : "no"), kind: (action) => (action.menuChangedByUser ? "changed" : "")},
        {title: "Id", width: "5%", text: (action) => String(action.id)},
        {title: "Why", width: "24%", text: (action) => action.why},
    ];
    const actionTexts = data.actions.map((action) => actionColumns.map((column) => column.text(action)).join("\n").toLowerCase());
    const allShortcuts = new Grid(element("all-shortcuts"), "All shortcuts", actionColumns);

    function filterShortcuts() {
        const terms = termsOf(element("shortcut-search"));
        const rows = data.actions.filter((action, number) => terms.every((term) => actionTexts[number].includes(term)));
        allShortcuts.show(rows, terms);
        element("shortcuts-count").textContent = `${many(rows.length, "action")} of ${data.actions.length.toLocaleString("en")}`;
    }

    function showConflicts() {
        const rows = data.conflicts.map((conflict) =>
            make("tr", {}, make("th", {scope: "row"}, conflict.shortcut), make("td", {}, conflict.context),
                 make("td", {}, conflict.action), make("td", {}, conflict.effect)));
        element("conflicts").append(rows.length === 0 ? make("p", {}, "No two actions are in each other's way.")
            : tableOf(many(rows.length, "conflict"), ["Shortcut", "Context", "Action", "Effect"], rows));
    }

    // --- What the user changed -----------------------------------------------------------------------------------

    function showChanges() {
        const changedActions = data.actions.filter((action) => action.changedByUser || action.menuChangedByUser);
        const unread = data.files.user.unread ? "The user's file is there, and nothing of it is read; the findings below say why." : "";
        element("changed-settings-count").textContent = unread || `${many(changedSettings.length, "setting")} set by the user`;
        element("changed-shortcuts-count").textContent = unread || `${many(changedActions.length, "action")} different because of the user`;
        new Grid(element("changed-settings"), "Settings set by the user", settingColumns).show(changedSettings);
        new Grid(element("changed-shortcuts"), "Actions different because of the user", actionColumns).show(changedActions);
        if (data.strays.length > 0) {
            const rows = data.strays.map((stray) => make("tr", {}, make("th", {scope: "row"}, stray.name), make("td", {}, stray.value),
                make("td", {}, stray.at ? `user ${stray.at.join(":")}` : ""), make("td", {}, stray.why)));
            element("strays").append(make("h3", {}, "Without effect"),
                tableOf("Entries of the user's file that set nothing", ["Entry", "Value", "Position", "Why"], rows));
        }
        element("summary").textContent = [many(data.settings.length, "setting"), 
            data.files.user.unread ? "user's file not read" : `${changedSettings.length.toLocaleString("en")} set by the user`,
            many(data.actions.length, "action"), many(data.conflicts.length, "conflict"), many(data.findings.length, "finding")].join(", ");
    }

    // --- Where files were looked for -----------------------------------------------------------------------------

    function findingOf(finding) {
        return make("div", {className: `finding ${finding.severity}`},
            make("p", {}, make("strong", {}, finding.severity), `: ${finding.text}`), make("p", {}, finding.advice));
    }

    function stepOf(step) {
        const candidates = step.candidates.map((candidate) =>
            make("li", {className: candidate.taken ? "taken" : ""}, candidate.text));
        return make("div", {className: "step"}, make("h3", {}, step.title), make("p", {}, step.result || "none"),
                    candidates.length ? make("ul", {}, ...candidates) : "", make("p", {}, step.file));
    }

    function goToSearchOnSlash(event) {
        const isTyping = event.target.closest("input:not([type=checkbox]), select, textarea");
        if (event.key === "/" && !isTyping && !event.ctrlKey && !event.altKey && !event.metaKey) {
            event.preventDefault();
            element("search").focus();
        }
    }

    function listenTo(input, filter, grid) {
        input.addEventListener("input", filter);
        input.addEventListener("keydown", (event) => {
            if (event.key === "ArrowDown" || event.key === "Enter") {
                event.preventDefault();
                grid.focus();
            } else if (event.key === "Escape" && input.value !== "") {
                event.preventDefault();
                input.value = "";
                filter();
            }
        });
    }

    showSections();
    showChanges();
    showConflicts();
    element("findings").append(...(data.findings.length ? data.findings.map(findingOf) : [make("p", {}, "Nothing is wrong there.")]));
    element("steps").append(...data.steps.map(stepOf));
    listenTo(element("search"), filterSettings, allSettings);
    listenTo(element("shortcut-search"), filterShortcuts, allShortcuts);
    element("section").addEventListener("change", filterSettings);
    element("only-changed").addEventListener("change", filterSettings);
    document.addEventListener("keydown", goToSearchOnSlash);
    filterSettings();
    filterShortcuts();
})();
