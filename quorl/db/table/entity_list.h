// The host's listing of entities on its command line.
#pragma once

class ZnDbEntity;

namespace ShareDB {

// Lists an entity, overrules first.
void listEntity(const ZnDbEntity* entity);
// The listing that every entity has: its class and the common attributes.
void listEntityPlainly(const ZnDbEntity* entity);
// Layer, color, linetype and its scale, lineweight, transparency, visibility and handle, one a line.
void listCommonEntityAttributes(const ZnDbEntity* entity);

} // namespace ShareDB
