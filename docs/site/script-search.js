// The search of MkDocs without a worker and without requests, which a browser allows neither in
// pages that are opened from a folder: the index comes as a script, search/index.js, in which
// scripts/docs.sh sets lanqorSearchIndex.
window.Worker = undefined;

// Takes the place of loading the worker's script.
$.getScript = function () {
    const load = (names, then) => {
        const script = document.createElement("script");
        script.src = joinUrl(base_url, names[0]);
        script.onload = names.length > 1 ? () => load(names.slice(1), then) : then;
        document.head.append(script);
    };
    load(["search/lunr.js", "search/index.js"], startSearch);
    const noPromise = { done: () => noPromise, fail: () => noPromise };
    return noPromise;
};

function startSearch() {
    const pages = {};
    lunr.tokenizer.separator = new RegExp(lanqorSearchIndex.config.separator);
    const index = lunr(function () {
        this.field("title");
        this.field("text");
        this.ref("location");
        for (const page of lanqorSearchIndex.docs) {
            this.add(page);
            pages[page.location] = page;
        }
    });
    window.search = (query) =>
        index.search(query).map(({ ref }) => ({
            ...pages[ref],
            summary: pages[ref].text.substring(0, 200),
        }));
    onWorkerMessage({ data: { config: lanqorSearchIndex.config } });
    initSearch();
}
