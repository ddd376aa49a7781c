"use strict";
// Shows of the report what is chosen in the tree, in the section that is chosen above it. Without this script
// the report stands there whole.
(() => {
    const items = [...document.querySelectorAll("[role=treeitem]")];
    const tabs = [...document.querySelectorAll("[role=tab]")];
    const panels = document.querySelector(".panels");
    const withPages = new Set();

    // Under the job and each document its pages at a glance, made when they are first shown: the pictures that
    // stand at the pages, small, each the way to its page.
    const addPages = (item) => {
        const list = document.createElement("ul");
        list.className = "pages";
        for (const page of item.querySelectorAll("[data-leaf]")) {
            const { hash, textContent } = page.firstElementChild;
            const picture = document.querySelector(`${hash} img`)?.cloneNode();
            if (!picture) continue;
            const link = document.createElement("a");
            link.href = hash;
            picture.alt = "";
            link.append(picture, textContent);
            link.addEventListener("click", (event) => {
                event.preventDefault();
                goTo(page);
            });
            list.appendChild(document.createElement("li")).append(link);
        }
        if (list.hasChildNodes()) document.querySelector(item.firstElementChild.hash).append(list);
        withPages.add(item);
    };
    const show = (item) => {
        if (!item.dataset.leaf && !withPages.has(item)) addPages(item);
        const ids = item.dataset.shows.split(" ");
        for (const article of document.querySelectorAll("article"))
            article.classList.toggle("shown", article.classList.contains("always") || ids.includes(article.id));
    };
    const select = (item, scrolls = true) => {
        for (const other of items) {
            other.setAttribute("aria-selected", other === item);
            other.tabIndex = other === item ? 0 : -1;
        }
        show(item);
        for (let outer = item.parentElement.closest("[role=treeitem]"); outer; outer = outer.parentElement.closest("[role=treeitem]"))
            outer.setAttribute("aria-expanded", "true");
        item.firstElementChild.scrollIntoView({ block: "nearest" });
        if (scrolls) panels.scrollTop = 0;
        history.replaceState(null, "", item.firstElementChild.getAttribute("href"));
    };
    const open = (tab) => {
        for (const other of tabs) {
            other.setAttribute("aria-selected", other === tab);
            other.tabIndex = other === tab ? 0 : -1;
            document.getElementById(other.getAttribute("aria-controls")).classList.toggle("current", other === tab);
        }
        panels.scrollTop = 0;
    };

    const seen = () => items.filter((item) => !item.parentElement.closest("[aria-expanded=false]"));
    const goTo = (item) => {
        if (!item) return;
        select(item);
        item.focus();
    };
    const isOpen = (item) => item.getAttribute("aria-expanded") === "true";
    const keys = {
        ArrowDown: (item) => goTo(seen()[seen().indexOf(item) + 1]),
        ArrowUp: (item) => goTo(seen()[seen().indexOf(item) - 1]),
        Home: () => goTo(seen()[0]),
        End: () => goTo(seen().at(-1)),
        ArrowRight: (item) => {
            if (item.getAttribute("aria-expanded") === "false") item.setAttribute("aria-expanded", "true");
            else goTo(item.querySelector("[role=treeitem]"));
        },
        ArrowLeft: (item) => {
            if (isOpen(item)) item.setAttribute("aria-expanded", "false");
            else goTo(item.parentElement.closest("[role=treeitem]"));
        },
        Enter: () => document.querySelector(".panel.current").focus(),
        " ": (item) => goTo(item),
    };
    for (const item of items) {
        item.addEventListener("keydown", (event) => {
            if (event.target !== item || !keys[event.key] || event.ctrlKey || event.altKey || event.metaKey) return;
            event.preventDefault();
            event.stopPropagation();
            keys[event.key](item);
        });
        item.firstElementChild.addEventListener("click", (event) => {
            event.preventDefault();
            goTo(item);
        });
    }
    const steps = { ArrowRight: (at) => at + 1, ArrowLeft: (at) => at - 1, Home: () => 0, End: () => -1 };
    for (const tab of tabs) {
        tab.addEventListener("click", () => open(tab));
        tab.addEventListener("keydown", (event) => {
            if (!steps[event.key]) return;
            event.preventDefault();
            const next = tabs.at(steps[event.key](tabs.indexOf(tab)) % tabs.length);
            open(next);
            next.focus();
        });
    }

    const wanted = () => items.find((item) => item.firstElementChild.getAttribute("href") === location.hash);
    document.body.classList.add("scripted");
    open(tabs[0]);
    select(wanted() ?? items[0]);
    addEventListener("hashchange", () => wanted() && select(wanted()));
    addEventListener("load", () => (panels.scrollTop = 0)); // the browser has gone to the address's place
})();
