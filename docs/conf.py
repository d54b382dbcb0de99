"""How Sphinx makes guide and reference. CMakeLists.txt beside it gives the version and where Doxygen's XML is."""
import pathlib
import re
import xml.etree.ElementTree

from breathe.renderer.sphinxrenderer import SphinxRenderer
from docutils import nodes
from sphinx import addnodes
from sphinx.domains.cpp import CPPDomain
from sphinx.util import logging

project = "kelcl"
copyright = author = "the kelcl maintainers"
extensions = ["myst_parser", "breathe"]
exclude_patterns = ["coverage.md", "performance"]
primary_domain = highlight_language = "cpp"
smartquotes_action = "D"

# Links to a heading are written as hosting sites have them.
myst_heading_anchors = 3

breathe_default_project = "kelcl"
breathe_default_members = ("members",)
breathe_show_include = False
breathe_show_enumvalue_initializer = True

html_theme = "furo"
html_title = "kelcl"
html_css_files = ["kelcl.css"]
html_static_path = ["static"]
html_copy_source = False
html_show_sphinx = html_show_copyright = False
pygments_dark_style = "github-dark"
toc_object_entries_show_parents = "hide"
# The names of what is described, which the theme shows in the colour of errors.
html_theme_options = {
    "light_css_variables": {"color-api-name": "#1a4fa0", "color-api-pre-name": "#1a4fa0"},
    "dark_css_variables": {"color-api-name": "#8ab4f8", "color-api-pre-name": "#8ab4f8"},
}

REFERENCES = {
    "DString": "strings whose copies share their text",
    "DException": "exceptions that are reported before they are thrown",
    "DMessageText": "texts from message catalogs",
    "DTrace": "trace lines, switched by environment variables",
    "DDate": "dates of the calendar, also before 1752",
    "DTime": "times of day",
    "DBase": "the root classes",
    "DWBuffer": "wide text and national-language functions",
    "DBuffer": "the buffers under strings",
}
man_pages = [("reference/kelcl", "kelcl", "classes for text, errors, tracing and dates", [], 7),
             ("reference/text-tools", "kelcl_text", "ranges, columns and numbers of text", [], 3)] + [
    (f"reference/{name}", name, brief, [], 3) for name, brief in REFERENCES.items()]
man_make_section_directory = True


def groups_become_sections(app, document):
    """The groups of a class and the classes in it are headings of the page, so that navigation and search lead to them."""
    for inner in [n for n in document.findall(addnodes.desc) if n["objtype"] in ("class", "struct")]:
        outer = next((n for n in node_and_parents(inner.parent) if isinstance(n, addnodes.desc)), None)
        if outer is not None:
            inner.parent.remove(inner)
            outer.parent.insert(outer.parent.index(outer) + 1, as_section(document, inner[0].astext(), [inner]))
    titles = [n for n in document.findall(nodes.rubric) if "breathe-sectiondef-title" in n["classes"]]
    for title in reversed(titles):
        group = title.parent
        start = group.index(title)
        name = title.astext().replace("Public ", "")
        section = as_section(document, name, group[start + 1:])
        del group[start:]
        of_class = next((n for n in node_and_parents(group) if isinstance(n, addnodes.desc)), None)
        if of_class is None:
            group.append(section)
        else:
            of_class.parent.insert(of_class.parent.index(of_class) + 1, section)


def as_section(document, title, content):
    section = nodes.section("", nodes.title(title, title), *content, names=[])
    document.set_id(section)
    return section


def node_and_parents(node):
    while node is not None:
        yield node
        node = node.parent


class SearchedDomain(CPPDomain):
    """A search need not find parameters, and finds the buffers last."""
    def get_objects(self):
        for *described, page, anchor, _ in super().get_objects():
            if described[-1] not in ("functionParam", "templateParam"):
                yield (*described, page, anchor, 2 if page == "reference/DBuffer" else 1)


def in_order_of_the_header(render):
    """Doxygen gives static members first; a header has the order in which they are to be read. What is protected is shown
    where a page asks for it, groups included."""
    def line_of(member):
        return member.location.line if member.location else 0

    def render_in_order(renderer, compound):
        if "protected-members" not in renderer.context.directive_args[2]:
            compound.sectiondef = [s for s in compound.sectiondef if any(m.prot != "protected" for m in s.memberdef)]
        for section in compound.sectiondef:
            section.memberdef.sort(key=line_of)
        compound.sectiondef.sort(key=lambda s: (s.kind != "user-defined", min(map(line_of, s.memberdef), default=0)))
        return render(renderer, compound)

    return render_in_order


def everything_public_is_shown(app, env):
    """Warns of a class or function of the headers that no page of the reference shows."""
    shown = {name for name, *_ in env.get_domain("cpp").get_objects()}
    index = pathlib.Path(app.config.breathe_projects["kelcl"], "index.xml")
    for compound in xml.etree.ElementTree.parse(index).iter("compound"):
        if compound.get("kind") in ("class", "struct"):
            names = [compound.findtext("name").replace(" ", "")]
        else:
            names = [member.findtext("name") for member in compound.iter("member") if member.get("kind") == "function"]
        for name in names:
            if not {name, "kelcl::" + name} & shown:
                logging.getLogger(__name__).warning("no page of the reference shows %s", name)


def complete_theme(app, failure):
    """Debian's Furo lacks what its makers compile into it: what browsers are to agree on, dark colours for those whose system
    asks for them, and the module that its script imports, which a page opened from a file may not."""
    if failure or app.builder.format != "html":
        return
    static = pathlib.Path(app.outdir, "_static")
    style = static / "styles/furo.css"
    rules = re.sub(r"@import url\((/javascript/[^)]*)\);",
                   lambda found: pathlib.Path("/usr/share" + found[1]).read_text(), style.read_text())
    if "prefers-color-scheme" not in rules:
        dark = re.search(r'body\[data-theme="dark"\] (\{[^}]*\})', rules)[1]
        rules += f'@media screen and (prefers-color-scheme: dark) {{ body:not([data-theme="light"]) {dark} }}\n'
    style.write_text(rules)
    script = static / "scripts/furo.js"
    script.write_text(re.sub(r'^import \w+ from "\./([^"]*)";$',
                             lambda found: (script.parent / found[1]).read_text(), script.read_text(), flags=re.M))


def setup(app):
    SphinxRenderer.methods["compounddef"] = in_order_of_the_header(SphinxRenderer.methods["compounddef"])
    app.add_domain(SearchedDomain, override=True)
    app.connect("env-check-consistency", everything_public_is_shown)
    # Before Sphinx collects the headings, which it does at 500.
    app.connect("doctree-read", groups_become_sections, priority=400)
    app.connect("build-finished", complete_theme)
