#include "StoredCases.h"

#include "TemporaryDatabase.h"

std::string caseContents(const TemporaryDatabase& database, int root) {
    const std::string r = std::to_string(root);
    const auto in = [&](const std::string& column) {
        return column + " >= " + r + " AND " + column + " < " + r +
               " + (SELECT range FROM n WHERE id = " + r + ")";
    };
    const auto values = [&](const std::string& table, const std::string& link, const std::string& value) {
        return "(SELECT string_agg(" + value + ", ',' ORDER BY w.id) FROM " + table + " w WHERE w." + link +
               " = v.id)";
    };
    const std::vector<std::string> text = database.column(
        "SELECT string_agg(line, E'\\n' ORDER BY line) FROM ("
        "SELECT format('N %s %s %s %s %s', id - " +
        r + ", trim(tag), trim(type), parent - " + r + ", range) AS line FROM n WHERE " + in("id") +
        " AND id <> " + r + " UNION ALL SELECT format('I %s %s %s', nid - " + r +
        ", trim(tag), value) FROM i WHERE " + in("nid") +
        " UNION ALL SELECT format('Q %s %s %s %s %s %s', nid - " + r +
        ", trim(tag), value, trim(unit), input, output) FROM q WHERE " + in("nid") +
        " UNION ALL SELECT format('S %s %s %s', nid - " + r + ", trim(tag), trim(value)) FROM s WHERE " +
        in("nid") + " UNION ALL SELECT format('IV %s %s %s', nid - " + r + ", trim(tag), " +
        values("ivv", "vid", "w.value::text") + ") FROM iv v WHERE " + in("nid") +
        " UNION ALL SELECT format('QV %s %s %s %s %s %s', nid - " + r +
        ", trim(tag), trim(unit), input, output, " + values("qvv", "vid", "w.value::text") +
        ") FROM qv v WHERE " + in("nid") + " UNION ALL SELECT format('SV %s %s %s', nid - " + r +
        ", trim(tag), " + values("svv", "vid", "trim(w.value)") + ") FROM sv v WHERE " + in("nid") +
        " UNION ALL SELECT format('QM %s %s %s %s %s %s', nid - " + r +
        ", trim(tag), trim(unit), input, output, " + values("qmv", "mid", "w.value::text") +
        ") FROM qm v WHERE " + in("nid") + ") AS lines");
    return text.empty() ? std::string() : text.front();
}

std::vector<int> caseRoots(const TemporaryDatabase& database) {
    std::vector<int> ids;
    for (const std::string& id : database.column("SELECT id FROM n WHERE parent = id ORDER BY id"))
        ids.push_back(std::stoi(id));
    return ids;
}
