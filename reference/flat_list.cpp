#include "reference/flat_list.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

void FlatList::FormCreate() {
  TFrm_Base_Outer::FormCreate();
  for (const QString& name : {u"Act_Locate"_s, u"Act_Other"_s}) removeScreenAction(name);
}

}  // namespace goodsbook
