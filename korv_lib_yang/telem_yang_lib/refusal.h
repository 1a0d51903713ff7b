/* Why the library refuses a module, as data.
 *
 * A load says why it fails in log lines alone. A host that wants more asks afterwards: then an inquiry takes the place of
 * the instance, goes through the steps of the load that has failed once more, and the function that refuses notes why. For
 * any other instance a note costs a comparison, and only where a load fails. */
#ifndef KORV_REFUSAL_H
#define KORV_REFUSAL_H

#include "telem_yang_lib/telem_yang_lib.h"

namespace korv {

/* Each has its sentence in load_failures.cpp. */
enum class Why : uint8_t {
    NoMemory, /* nothing was noted: what else may fail is always noted */
    NothingIsWrong,
    TaskId,
    AugmentNum,
    AttributeNum,
    Number,
    NoDatatype,
    NoLeafrefTarget,
    KeyNoLeaf,
    KeyNum,
    AutoKeys,
    AncestorKeysEmpty,
    AncestorKeysNoNumbers,
    AncestorKeyNum,
    AncestorKeysTooFew,
    ClassTypeUnknown,
    ClassTypeNotAlone,
    ClassTypeNoChildClass,
    ClassTypeNoLeafref,
    ClassTypeLeafStatements,
    TreeKeyNum,
    TreeAncestorKeyNum,
    TreeSize,
    Num
};

/* Texts are the schema library's. */
struct Refusal {
    Why eWhy;
    QY_NODE *pNode; /* the class, or null: that of the leaf, or the module as a whole. AugmentNum: the augment */
    QY_NODE *pLeaf; /* the leaf, or null */
    const char *pcArgument;  /* of the statement, or null */
    const char *pcStatement; /* keyword, or null: the one that eWhy is about */
};

struct Inquiry {
    TELMYANG_LOCAL_DATA_S stLocal; /* the instance, with closed log levels and no datatype adapt function */
    Refusal stRefusal;
};

/* Makes an inquiry of the same registry and memory module as the instance. */
Inquiry NewInquiry(const TELMYANG_LOCAL_DATA_S *pstHost);

/* Notes why an inquiry is refused; the first note counts. Does nothing for an instance, which may be null. */
void Refuse(TELMYANG_LOCAL_DATA_S *pstLocal, const Refusal &stRefusal);

} // namespace korv

#endif // KORV_REFUSAL_H
