#include "AttributeStore/AttributeBytesNameSpaces.h"

void AttributeBytesNameSpaces::SetNameSpaceAttributes(AttributeBytesNameSpacesId id,
                                                      const AttributeBytesRawList& attributes) {
    m_nameSpaces.insert_or_assign(id, attributes);
}
