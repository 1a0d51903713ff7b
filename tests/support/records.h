/* A module whose extension data is read and still attached, for tests that look at the records on schema nodes. */
#ifndef KORV_TEST_RECORDS_H
#define KORV_TEST_RECORDS_H

#include "korv_lib_yang/korv_lib_yang.h"
#include "support/host.h"

namespace test {

class RecordTest : public HostTest {
  protected:
    void TearDown() override
    {
        Release();
        HostTest::TearDown();
    }

    /* Writes module m with the body, loads its schema and reads its extension data; the reading's result. */
    uint32_t Read(const std::string &body, const std::string &imports = "")
    {
        dir.Add("m", body, imports);
        EXPECT_EQ(TELMYANG_LoadYangModule(Local(), Local()->pstYangCtx, "m"), 0u) << "schema";
        const auto read = [&] { return TELEMYANG_ReadAllYinExtensionData(Local(), "m", &file, SchemaModule("m")); };
        if (!readsOnce && MayRunTwice()) {
            (void)Unheard(read);
            Release();
        }
        log.Clear();
        return read();
    }

    void Release()
    {
        TELEMYANG_FreeAllYinExtensionInMouleEx(Local(), "m", nullptr, &file);
        ZOR_Free_F(file.pModuleExtInfo, __FILE__, __LINE__);
        file = {};
    }

    YinInst *Inst(const std::string &path)
    {
        QY_NODE *node = SchemaNode(SchemaModule("m"), path);
        return node != nullptr ? TELMYANG_MDL_GetYinInstFromYinNode(node) : nullptr;
    }

    /* Attribute id in the record of a leaf; -1 without record. */
    int LeafId(const std::string &path)
    {
        const void *record = QY_NODE_GetPrivate(SchemaNode(SchemaModule("m"), path));
        return record != nullptr ? static_cast<const YinLeaf *>(record)->ucAttrID : -1;
    }

    TELMYANG_YANG_FILE_INFO_S file = {};
    bool readsOnce = false; /* reading changes the schema: a second time finds something else */
};

/* "20 21" of a key byte array. */
inline std::string Bytes(const uint8_t *bytes, uint32_t num)
{
    std::string text;
    for (uint32_t i = 0; bytes != nullptr && i < num; ++i)
        text += (i == 0 ? "" : " ") + std::to_string(bytes[i]);
    return text;
}

inline std::string OwnKeys(const YinInst *inst)
{
    return Bytes(inst->pucSelfKeyAttributes, inst->ucKeyNum);
}

inline std::string AncestorKeys(const YinInst *inst)
{
    return inst->pstKeyRefArray != nullptr ? Bytes(inst->pstKeyRefArray->pucKeyAttributes, inst->ucAncKeyNum) : "";
}

} // namespace test

#endif // KORV_TEST_RECORDS_H
