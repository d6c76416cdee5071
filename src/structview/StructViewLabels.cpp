#include "structview/StructViewLabels.h"

namespace tlm {

StructViewLabels LoadStructViewLabels(const std::function<std::u16string(std::string_view key)>& translate)
{
    StructViewLabels labels;
    if (!translate) {
        return labels;
    }
    labels.title = translate("structview.title");
    labels.headerDefinition = translate("structview.header.definition");
    labels.columnName = translate("structview.column.name");
    labels.columnSize = translate("structview.column.size");
    labels.columnOffset = translate("structview.column.offset");
    labels.columnType = translate("structview.column.type");
    labels.columnValue = translate("structview.column.value");
    labels.emptyMessage = translate("structview.empty.message");
    labels.openButton = translate("structview.open.button");
    labels.reloadButton = translate("structview.reload.button");
    labels.closeButton = translate("structview.close.button");
    labels.infoButton = translate("structview.info.button");
    labels.errorPrefix = translate("structview.error.prefix");
    labels.byteArray = translate("structview.valueformat.bytearray");
    labels.byteArrayHex = translate("structview.valueformat.bytearray.hex");
    labels.byteArrayAscii = translate("structview.valueformat.bytearray.ascii");
    labels.endian = translate("structview.valueformat.endian");
    labels.endianLittle = translate("structview.valueformat.endian.little");
    labels.endianBig = translate("structview.valueformat.endian.big");
    labels.numericBase = translate("structview.valueformat.numericbase");
    labels.numericBaseHex = translate("structview.valueformat.numericbase.hex");
    labels.numericBaseDec = translate("structview.valueformat.numericbase.dec");
    return labels;
}

} // namespace tlm
