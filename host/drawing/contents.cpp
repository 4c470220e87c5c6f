// What follows from a change of a drawing.
#include "host/drawing/contents.h"

namespace qrs::host {

using dxf::RecordId;
using dxf::RecordKind;

void Contents::changed(RecordId record, int by) {
    classes_.count(record, by);
    const RecordKind kind = drawing_.record(record).kind;
    TableKind table = TableKind::Layer;
    if (tables_.kindOf(record, table)) tables_.countChanged(table, record, by);
    // Looking the blocks over again for every entity that goes would take longer than all the rest.
    if (kind == RecordKind::Block || kind == RecordKind::EndBlock || table == TableKind::Block) blocks_.changed();
}

void Contents::renamed(RecordId record) {
    TableKind table = TableKind::Layer;
    if (!tables_.kindOf(record, table)) return;
    tables_.renamed(table);
    if (table == TableKind::Block) blocks_.changed();
}

}  // namespace qrs::host
