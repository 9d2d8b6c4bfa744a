// The HTML report: one self-contained page for each model, with five tabs (messages, strings, integers,
// reals, subobjects). A page needs nothing beside it but the pages of the models below it, which it links by
// their identifiers.
#include <tarvo/core/Model.h>
#include <tarvo/core/Report.h>
#include <tarvo/core/Version.h>
#include <tarvo/utility/FunctionName.h>
#include <tarvo/utility/Log.h>

#include <fstream>
#include <initializer_list>
#include <sstream>

using Tarvo::Core::escapeXml;

namespace {

constexpr int verbosityFile = 0;

constexpr const char* style = R"(<style type="text/css">
<!--
.tabs {position:relative; height: 27px; margin: 0; padding: 0; background:#BF2636; overflow:hidden}
.tabs li {display:inline;}
.tabs a:hover, .tabs a.tab-active {background:#40D9C9; border-right: 1px solid #fff} 
.tabs a  {height: 27px; font:14px helvetica, sans-serif, verdana;font-weight:bold;
    position:relative; padding:6px 10px 10px 10px; margin: 0px -4px 0px 0px; color:#FFFFFF;text-decoration:none;border-left:2px solid #fff; border-right:2px solid #BF2636;}
.tab-container {background: #fff; border:3px solid #BF2636 }
.tab-panes { margin: 3px; font:10px helvetica, sans-serif, verdana }
// -->
</style>)";

// The panes are measured while all are shown, so that the tabs keep the size of the largest when one is
// picked; then all are hidden and the default tab is clicked.
constexpr const char* script = R"(<script language="JavaScript1.3">
var panes = new Array();

function setupPanes(containerId, defaultTabId) {
  panes[containerId] = new Array();
  var maxHeight = 0;
  var maxWidth = 0;
  var container = document.getElementById(containerId);
  var paneContainer = container.getElementsByTagName("div")[0];
  var paneList = paneContainer.childNodes;
  for (var i = 0; i < paneList.length; i++) {
    var pane = paneList[i];
    if (pane.nodeType != 1) continue;
    if (pane.offsetHeight > maxHeight) maxHeight = pane.offsetHeight;
    if (pane.offsetWidth - 10 > maxWidth) maxWidth = pane.offsetWidth - 10;
    panes[containerId][pane.id] = pane;
    pane.style.display = "none";
  }
  paneContainer.style.height = maxHeight + "px";
  paneContainer.style.width = maxWidth + "px";
  document.getElementById(defaultTabId).onclick();
}

function showPane(paneId, activeTab) {
  for (var containerId in panes) {
    activeTab.blur();
    activeTab.className = "tab-active";
    if (panes[containerId][paneId] != null) {
      panes[containerId][paneId].style.display = "block";
      var container = document.getElementById(containerId);
      var tabs = container.getElementsByTagName("ul")[0].getElementsByTagName("a");
      for (var i = 0; i < tabs.length; i++)
        if (tabs[i] != activeTab) tabs[i].className = "tab-disabled";
      for (var id in panes[containerId])
        if (id != paneId) panes[containerId][id].style.display = "none";
    }
  }
  return false;
}
</script>)";

const char* const table = "<table cellspacing=\"0\" cellpadding=\"0\" border=\"1\">";

// A row of cells as they stand; texts that come from the model go through escapeXml before.
void row(std::ostream& out, std::initializer_list<std::string> cells) {
    out << "<tr>";
    for (const std::string& cell : cells)
        out << (&cell == cells.begin() ? " <td>" : "<td>") << cell << "</td>";
    out << "</tr>" << std::endl;
}

std::string bold(const char* text) {
    return std::string("<b>") + text + "</b>";
}

// The messages of one list, "Error[0]" and so on, each counted from 0.
void messageRows(std::ostream& out, const char* kind, const std::vector<std::string>& messages) {
    for (std::size_t i = 0; i < messages.size(); ++i)
        out << "<tr> <td>" << kind << '[' << i << "]</td><td>" << escapeXml(messages[i]) << "</td> </tr>"
            << std::endl;
}

} // namespace

void Model::printHtml(const char* dir) const {
    for (const Model* model : subModels())
        model->printHtml(dir);
    TARVO_LOG(3) << "Entered with " << id();
    const std::string path = std::string(dir) + "/" + std::to_string(id()) + ".html";
    std::ofstream out(path);
    if (!out) throw ErrorRunTime(TARVO_FUNCTION, "can not write to " + path);

    out << "<html><body onload='setupPanes(\"container1\", \"tab1\");'>" << std::endl;
    out << style << std::endl;
    out << "<div style=\"margin:2px;font-size:20px;font-family:arial;font-weight:bold;color:#BF2636\">"
        << fullTag() << " [" << escapeXml(type()) << "] " << description() << "</div>" << std::endl;

    out << "<div class=\"tab-container\" id=\"container1\">" << std::endl;
    out << "  <ul class=\"tabs\">" << std::endl;
    int pane = 0;
    for (const char* label : {"Messages", "Strings", "Integers", "Reals", "Subobjects"}) {
        ++pane;
        out << "    <li><a href=\"#\" onClick=\"return showPane('pane" << pane << "', this)\""
            << (pane == 1 ? " id=\"tab1\"" : "") << '>' << label << "</a></li>" << std::endl;
    }
    out << "  </ul>" << std::endl;
    out << "  <div class=\"tab-panes\">  " << std::endl;

    out << "    <div id=\"pane1\">" << std::endl << table << std::endl;
    row(out, {bold("TYPE"), bold("MESSAGE")});
    messageRows(out, "Error", errors.value());
    messageRows(out, "Warning", warnings.value());
    out << "</table>" << std::endl << "    </div>" << std::endl;

    out << "    <div id=\"pane2\">" << std::endl << table << std::endl;
    row(out, {bold("TAG"), bold("VALUE"), bold("DESCRIPTION")});
    for (const auto& [tag, item] : strings)
        row(out, {escapeXml(tag), escapeXml(item->value()), escapeXml(item->description())});
    out << "</table>" << std::endl << "    </div>" << std::endl;

    out << "    <div id=\"pane3\">" << std::endl << table << std::endl;
    row(out, {bold("TAG"), bold("VALUE"), bold("DESCRIPTION")});
    for (const auto& [tag, item] : integers)
        row(out, {escapeXml(tag), std::to_string(item->value()), escapeXml(item->description())});
    out << "</table>" << std::endl << "    </div>" << std::endl;

    out << "    <div id=\"pane4\">" << std::endl << table << std::endl;
    row(out, {bold("TAG"), bold("VALUE"), bold("DESCRIPTION")});
    for (const auto& [tag, item] : quantities) {
        std::ostringstream value;
        value << item->value();
        row(out, {escapeXml(tag), value.str(), escapeXml(item->description())});
    }
    out << "</table>" << std::endl << "    </div>" << std::endl;

    out << "    <div id=\"pane5\">" << std::endl << table << std::endl;
    row(out, {bold("TAG"), bold("TYPE"), bold("DESCRIPTION")});
    for (const Model* model : subModels())
        row(out, {"<a href=\"" + std::to_string(model->id()) + ".html\">" + escapeXml(model->tag()) + "</a>",
                  escapeXml(model->type()), escapeXml(model->description())});
    out << "</table>" << std::endl << "    </div>" << std::endl;

    out << "  </div>" << std::endl << "</div>" << std::endl;
    out << script << std::endl;
    out << "<hr>" << Tarvo::Core::kernelVersion << " @ " << Tarvo::Core::reportTimestamp() << std::endl;
    out << "</body></html>" << std::endl;
    if (!out) throw ErrorRunTime(TARVO_FUNCTION, "can not write to " + path);
    TARVO_LOG(4) << "Done";
}
