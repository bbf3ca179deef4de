<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>Velmora</name>
    <message>
        <source>Text compare mode</source>
        <translation>文本比较模式</translation>
    </message>
    <message>
        <source>Folder compare mode</source>
        <translation>文件夹比较模式</translation>
    </message>
    <message>
        <source>Text edit mode</source>
        <translation>文本编辑模式</translation>
    </message>
    <message>
        <source>Folder sync mode</source>
        <translation>文件夹同步模式</translation>
    </message>
    <message>
        <source>Binary compare mode</source>
        <translation>二进制比较模式</translation>
    </message>
    <message>
        <source>Table compare mode</source>
        <translation>表格比较模式</translation>
    </message>
    <message>
        <source>Image compare mode</source>
        <translation>图像比较模式</translation>
    </message>
    <message>
        <source>Git repository compare mode</source>
        <translation>Git 仓库比较模式</translation>
    </message>
    <message>
        <source>Archive compare mode</source>
        <translation>压缩包比较模式</translation>
    </message>
    <message>
        <source>Checksum verification mode</source>
        <translation>校验和验证模式</translation>
    </message>
    <message>
        <source>Version info compare mode</source>
        <translation>版本信息比较模式</translation>
    </message>
    <message>
        <source>Velmora — file and folder comparison</source>
        <translation>Velmora — 文件与文件夹比较</translation>
    </message>
    <message>
        <source>UI language: en (default) or zh</source>
        <translation>界面语言：en（默认）或 zh</translation>
    </message>
    <message>
        <source>UI theme: light (default) or dark</source>
        <translation>界面主题：light（浅色，默认）或 dark（深色）</translation>
    </message>
    <message>
        <source>Export diff report to HTML after compare</source>
        <translation>比较后将差异报告导出为 HTML</translation>
    </message>
    <message>
        <source>Treat path as left side (shell context menu)</source>
        <translation>将路径作为左侧（资源管理器右键菜单）</translation>
    </message>
    <message>
        <source>Treat path as right side; pairs with prior --as-left</source>
        <translation>将路径作为右侧，与之前的 --as-left 配对</translation>
    </message>
    <message>
        <source>Open a workspace file</source>
        <translation>打开工作区文件</translation>
    </message>
    <message>
        <source>Text merge mode: left, right and base, in this order</source>
        <translation>文本合并模式：依次为左侧、右侧和基准</translation>
    </message>
    <message>
        <source>File that the merged text is saved to</source>
        <translation>保存合并结果的文件</translation>
    </message>
    <message>
        <source>Return only when the opened tabs are closed</source>
        <translation>打开的标签页关闭后才返回</translation>
    </message>
    <message>
        <source>Base file of a merge</source>
        <translation>合并的基准文件</translation>
    </message>
    <message>
        <source>the window was lost before its tab was closed</source>
        <translation>标签页关闭之前窗口已中断</translation>
    </message>
    <message>
        <source>unknown option %1 is ignored</source>
        <translation>忽略未知选项 %1</translation>
    </message>
    <message>
        <source>option %1 is ignored: it needs a value</source>
        <translation>忽略选项 %1：缺少参数值</translation>
    </message>
    <message>
        <source>surplus path %1 is ignored</source>
        <translation>忽略多余的路径 %1</translation>
    </message>
    <message>
        <source>Left file or folder path</source>
        <translation>左侧文件或文件夹路径</translation>
    </message>
    <message>
        <source>Right file or folder path</source>
        <translation>右侧文件或文件夹路径</translation>
    </message>
    <message>
        <source>Compare as text</source>
        <translation>按文本比较</translation>
    </message>
    <message>
        <source>Folder compare(&amp;F)</source>
        <translation>文件夹比较(&amp;F)</translation>
    </message>
    <message>
        <source>Folder compare</source>
        <translation>文件夹比较</translation>
    </message>
    <message>
        <source>Folder compare %1</source>
        <translation>文件夹比较 %1</translation>
    </message>
    <message>
        <source>See which files two folders share, lack or hold in different versions.</source>
        <translation>查看两个文件夹中哪些文件相同、缺失或版本不同。</translation>
    </message>
    <message>
        <source>Text compare(&amp;I)</source>
        <translation>文本比较(&amp;I)</translation>
    </message>
    <message>
        <source>Text compare</source>
        <translation>文本比较</translation>
    </message>
    <message>
        <source>Text compare %1</source>
        <translation>文本比较 %1</translation>
    </message>
    <message>
        <source>Compare two text files line by line and edit them side by side.</source>
        <translation>逐行比较两个文本文件，并可并排编辑。</translation>
    </message>
    <message>
        <source>Text edit</source>
        <translation>文本编辑</translation>
    </message>
    <message>
        <source>Text edit %1</source>
        <translation>文本编辑 %1</translation>
    </message>
    <message>
        <source>Open, edit and save one text file.</source>
        <translation>打开、编辑并保存单个文本文件。</translation>
    </message>
    <message>
        <source>Text merge(&amp;E)</source>
        <translation>文本合并(&amp;E)</translation>
    </message>
    <message>
        <source>Text merge</source>
        <translation>文本合并</translation>
    </message>
    <message>
        <source>Three-way merge %1</source>
        <translation>三方合并 %1</translation>
    </message>
    <message>
        <source>Merge two versions of a text file that come from one base.</source>
        <translation>合并源自同一基准的两个文本文件版本。</translation>
    </message>
    <message>
        <source>Merge two versions of a text</source>
        <translation>合并一个文本的两个版本</translation>
    </message>
    <message>
        <source>Choose both versions and the file that they come from, or drop all three here: left, right, base. Of a file with conflict markers, the left place is enough.</source>
        <translation>请选择两个版本及其来源文件，或将三个文件一起拖到此处：左侧、右侧、基准。带冲突标记的文件只需放在左侧。</translation>
    </message>
    <message>
        <source>The texts end their lines differently: the result ends them with %1</source>
        <translation>各文本的换行符不同：结果使用 %1</translation>
    </message>
    <message>
        <source>line by line</source>
        <translation>逐行合并</translation>
    </message>
    <message>
        <source>line by line, lines left out: %1</source>
        <translation>逐行合并，略去的行数：%1</translation>
    </message>
    <message>
        <source>The merge line by line left out lines, which are marked with ! above the result</source>
        <translation>逐行合并略去了一些行，它们在结果上方以 ! 标出</translation>
    </message>
    <message>
        <source>Line by line over the base</source>
        <translation>按基准逐行合并</translation>
    </message>
    <message>
        <source>Settle touching changes line by line</source>
        <translation>逐行处理相邻的更改</translation>
    </message>
    <message>
        <source>Changes of different lines are no conflict, even where they touch</source>
        <translation>不同行的更改即使相邻也不算冲突</translation>
    </message>
    <message>
        <source>Put in</source>
        <translation>放入</translation>
    </message>
    <message>
        <source>Lines that the merge line by line left out</source>
        <translation>逐行合并略去的行</translation>
    </message>
    <message>
        <source>Put the selected lines into the result, where they stand in their version (Enter)</source>
        <translation>将选中的行放入结果，位置与其所在版本相同（Enter）</translation>
    </message>
    <message>
        <source>Lines left out: %1</source>
        <translation>略去的行：%1</translation>
    </message>
    <message>
        <source>Line</source>
        <translation>行</translation>
    </message>
    <message>
        <source>Line by line for all open conflicts</source>
        <translation>所有未决冲突按基准逐行合并</translation>
    </message>
    <message>
        <source>Settle changes of different lines; lines without one in the base are left out, marked and counted</source>
        <translation>解决不同行的更改；在基准中没有对应的行会被略去、标出并计数</translation>
    </message>
    <message>
        <source>Take the left</source>
        <translation>采用左侧</translation>
    </message>
    <message>
        <source>Take the base</source>
        <translation>采用基准</translation>
    </message>
    <message>
        <source>Take the right</source>
        <translation>采用右侧</translation>
    </message>
    <message>
        <source>Take left, then right</source>
        <translation>先采用左侧，再采用右侧</translation>
    </message>
    <message>
        <source>Take right, then left</source>
        <translation>先采用右侧，再采用左侧</translation>
    </message>
    <message>
        <source>Take the left for all open conflicts</source>
        <translation>所有未决冲突采用左侧</translation>
    </message>
    <message>
        <source>Take the base for all open conflicts</source>
        <translation>所有未决冲突采用基准</translation>
    </message>
    <message>
        <source>Take the right for all open conflicts</source>
        <translation>所有未决冲突采用右侧</translation>
    </message>
    <message>
        <source>Edited</source>
        <translation>已编辑</translation>
    </message>
    <message>
        <source>Both</source>
        <translation>两侧</translation>
    </message>
    <message>
        <source>Conflict</source>
        <translation>冲突</translation>
    </message>
    <message>
        <source>%1-%2</source>
        <translation>%1-%2</translation>
    </message>
    <message>
        <source>Lines</source>
        <translation>行</translation>
    </message>
    <message>
        <source>Change</source>
        <translation>更改</translation>
    </message>
    <message>
        <source>Decision</source>
        <translation>决定</translation>
    </message>
    <message>
        <source>Decided</source>
        <translation>决定者</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>文本</translation>
    </message>
    <message>
        <source>%1 (look)</source>
        <translation>%1（请查看）</translation>
    </message>
    <message>
        <source>Open only</source>
        <translation>仅未决</translation>
    </message>
    <message>
        <source>All changes of the merge</source>
        <translation>合并的全部更改</translation>
    </message>
    <message>
        <source>Words in the changes</source>
        <translation>更改中的文字</translation>
    </message>
    <message>
        <source>Shows the changes that hold all of these words</source>
        <translation>显示包含所有这些文字的更改</translation>
    </message>
    <message>
        <source>Shows only open conflicts, and what was settled but is worth a look</source>
        <translation>只显示未决的冲突，以及已解决但值得查看的更改</translation>
    </message>
    <message>
        <source>No version has changed anything.</source>
        <translation>两个版本都没有更改。</translation>
    </message>
    <message>
        <source>No change holds these words, or none is open.</source>
        <translation>没有包含这些文字的更改，或没有未决的冲突。</translation>
    </message>
    <message>
        <source>Merge</source>
        <translation>合并</translation>
    </message>
    <message>
        <source>Previous conflict</source>
        <translation>上一处冲突</translation>
    </message>
    <message>
        <source>Next conflict</source>
        <translation>下一处冲突</translation>
    </message>
    <message>
        <source>The current conflict, how many there are, and how many are still open</source>
        <translation>当前冲突、冲突总数以及未决的数量</translation>
    </message>
    <message>
        <source>Previous change</source>
        <translation>上一处更改</translation>
    </message>
    <message>
        <source>Next change</source>
        <translation>下一处更改</translation>
    </message>
    <message>
        <source>Switch to the next text</source>
        <translation>切换到下一个文本</translation>
    </message>
    <message>
        <source>Take the left for the selected changes or the current one</source>
        <translation>对所选更改或当前更改采用左侧</translation>
    </message>
    <message>
        <source>Base</source>
        <translation>基准</translation>
    </message>
    <message>
        <source>Take the base for the selected changes or the current one</source>
        <translation>对所选更改或当前更改采用基准</translation>
    </message>
    <message>
        <source>Take the right for the selected changes or the current one</source>
        <translation>对所选更改或当前更改采用右侧</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Save the result</source>
        <translation>保存结果</translation>
    </message>
    <message>
        <source>Save with conflict markers...</source>
        <translation>连同冲突标记保存...</translation>
    </message>
    <message>
        <source>Show the base</source>
        <translation>显示基准</translation>
    </message>
    <message>
        <source>Show the base between the two versions</source>
        <translation>在两个版本之间显示基准</translation>
    </message>
    <message>
        <source>List of changes</source>
        <translation>更改列表</translation>
    </message>
    <message>
        <source>Show all changes, what was decided and by whom</source>
        <translation>显示全部更改、所作的决定以及由谁决定</translation>
    </message>
    <message>
        <source>No conflicts</source>
        <translation>没有冲突</translation>
    </message>
    <message>
        <source>Conflict %1 of %2, open: %3</source>
        <translation>冲突 %1/%2，未决：%3</translation>
    </message>
    <message>
        <source>Conflicts: %1, open: %2</source>
        <translation>冲突：%1，未决：%2</translation>
    </message>
    <message>
        <source>Merge the texts anew</source>
        <translation>重新合并文本</translation>
    </message>
    <message>
        <source>The versions stay as they are: edit the result</source>
        <translation>各版本保持不变：请编辑结果</translation>
    </message>
    <message>
        <source>File that both come from (drop it here)...</source>
        <translation>两者共同的来源文件（拖到此处）...</translation>
    </message>
    <message>
        <source>Select base file</source>
        <translation>选择基准文件</translation>
    </message>
    <message>
        <source>Encoding of the base file</source>
        <translation>基准文件的编码</translation>
    </message>
    <message>
        <source>Result</source>
        <translation>结果</translation>
    </message>
    <message>
        <source>The letter beside a line says where it comes from: L left, B base, R right, = both alike, H by hand</source>
        <translation>行旁的字母表示该行的来源：L 左侧，B 基准，R 右侧，= 两侧相同，H 手工编辑</translation>
    </message>
    <message>
        <source>not saved yet</source>
        <translation>尚未保存</translation>
    </message>
    <message>
        <source>Select the versions to merge and their base, or one file with conflict markers</source>
        <translation>请选择要合并的两个版本及其基准，或一个带冲突标记的文件</translation>
    </message>
    <message>
        <source>Select the right version</source>
        <translation>请选择右侧版本</translation>
    </message>
    <message>
        <source>There is no such file: %1</source>
        <translation>没有这个文件：%1</translation>
    </message>
    <message>
        <source>File too large to be merged here (limit %1 MB)</source>
        <translation>文件过大，无法在此合并（上限 %1 MB）</translation>
    </message>
    <message>
        <source>Merge anew</source>
        <translation>重新合并</translation>
    </message>
    <message>
        <source>The result has unsaved decisions and edits. Give them up?</source>
        <translation>结果中有尚未保存的决定和编辑。要放弃它们吗？</translation>
    </message>
    <message>
        <source>Merging...</source>
        <translation>正在合并...</translation>
    </message>
    <message>
        <source>Merge cancelled</source>
        <translation>合并已取消</translation>
    </message>
    <message>
        <source>Not enough memory to merge these files</source>
        <translation>内存不足，无法合并这些文件</translation>
    </message>
    <message>
        <source>Cannot open file: %1</source>
        <translation>无法打开文件：%1</translation>
    </message>
    <message>
        <source>This file has no complete conflict markers: select the other version and the base</source>
        <translation>此文件没有完整的冲突标记：请选择另一版本和基准</translation>
    </message>
    <message>
        <source>One conflict is still open: the result has nothing in its place.</source>
        <translation>还有一处冲突未决：结果中该处没有内容。</translation>
    </message>
    <message>
        <source>%1 conflicts are still open: the result has nothing in their places.</source>
        <translation>还有 %1 处冲突未决：结果中这些地方没有内容。</translation>
    </message>
    <message>
        <source>Open conflicts</source>
        <translation>未决的冲突</translation>
    </message>
    <message>
        <source>Save the result all the same?</source>
        <translation>仍要保存结果吗？</translation>
    </message>
    <message>
        <source>Save with &amp;markers</source>
        <translation>连同标记保存(&amp;M)</translation>
    </message>
    <message>
        <source>Save &amp;without</source>
        <translation>不带标记保存(&amp;W)</translation>
    </message>
    <message>
        <source>Saved with conflict markers: %1</source>
        <translation>已连同冲突标记保存：%1</translation>
    </message>
    <message>
        <source>The encoding of this file cannot hold the result: %1</source>
        <translation>此文件的编码无法容纳结果：%1</translation>
    </message>
    <message>
        <source>Keep what was decided so far in a file with conflict markers?</source>
        <translation>要将已作的决定连同冲突标记保存到文件中吗？</translation>
    </message>
    <message>
        <source>There is no result to save yet: merge first</source>
        <translation>还没有可保存的结果：请先合并</translation>
    </message>
    <message>
        <source>The result is saved already</source>
        <translation>结果已经保存</translation>
    </message>
    <message>
        <source>Save the merged result?
%1</source>
        <translation>要保存合并结果吗？
%1</translation>
    </message>
    <message>
        <source>The file of the result has changed on disk: %1</source>
        <translation>结果文件在磁盘上已更改：%1</translation>
    </message>
    <message>
        <source>The file of the result is no longer there: %1</source>
        <translation>结果文件已不存在：%1</translation>
    </message>
    <message>
        <source>The result&apos;s file holds bytes that no text has</source>
        <translation>结果文件含有文本中不会出现的字节</translation>
    </message>
    <message>
        <source>The result&apos;s file holds bytes that its encoding does not know</source>
        <translation>结果文件含有其编码无法识别的字节</translation>
    </message>
    <message>
        <source>Find in this text</source>
        <translation>在此文本中查找</translation>
    </message>
    <message>
        <source>Replace all matches in the whole result as one step</source>
        <translation>一步替换整个结果中的所有匹配</translation>
    </message>
    <message>
        <source>No further conflict</source>
        <translation>后面没有冲突</translation>
    </message>
    <message>
        <source>No earlier conflict</source>
        <translation>前面没有冲突</translation>
    </message>
    <message>
        <source>No further conflict; still open above: %1</source>
        <translation>后面没有冲突了；前面仍未解决：%1</translation>
    </message>
    <message>
        <source>No earlier conflict; still open below: %1</source>
        <translation>前面没有冲突了；后面仍未解决：%1</translation>
    </message>
    <message>
        <source>No further change</source>
        <translation>后面没有更改</translation>
    </message>
    <message>
        <source>No earlier change</source>
        <translation>前面没有更改</translation>
    </message>
    <message>
        <source>Folders are not supported here — use the Folder merge tab.</source>
        <translation>此处不支持文件夹 — 请使用“文件夹合并”标签页。</translation>
    </message>
    <message>
        <source>Go to a change or select some first</source>
        <translation>请先转到一处更改或选择若干更改</translation>
    </message>
    <message>
        <source>Changes: %1, conflicts: %2, open: %3</source>
        <translation>%1 处更改，%2 处冲突，%3 处未决</translation>
    </message>
    <message>
        <source>Merge: %1</source>
        <translation>合并：%1</translation>
    </message>
    <message>
        <source>Open conflict: take the left, the base or the right, or write here</source>
        <translation>未决的冲突：采用左侧、基准或右侧，或在此输入</translation>
    </message>
    <message>
        <source>Change %1 of %2: %3</source>
        <translation>更改 %1/%2：%3</translation>
    </message>
    <message>
        <source>Base text</source>
        <translation>基准文本</translation>
    </message>
    <message>
        <source>Result text</source>
        <translation>结果文本</translation>
    </message>
    <message>
        <source>unchanged</source>
        <translation>未更改</translation>
    </message>
    <message>
        <source>changed on the left</source>
        <translation>左侧已更改</translation>
    </message>
    <message>
        <source>changed on the right</source>
        <translation>右侧已更改</translation>
    </message>
    <message>
        <source>changed alike on both sides</source>
        <translation>两侧相同的更改</translation>
    </message>
    <message>
        <source>conflict</source>
        <translation>冲突</translation>
    </message>
    <message>
        <source>open</source>
        <translation>未决</translation>
    </message>
    <message>
        <source>taken from the base</source>
        <translation>取自基准</translation>
    </message>
    <message>
        <source>taken from both</source>
        <translation>取自两侧</translation>
    </message>
    <message>
        <source>taken from the left</source>
        <translation>取自左侧</translation>
    </message>
    <message>
        <source>taken from the right</source>
        <translation>取自右侧</translation>
    </message>
    <message>
        <source>left, then right</source>
        <translation>先左后右</translation>
    </message>
    <message>
        <source>right, then left</source>
        <translation>先右后左</translation>
    </message>
    <message>
        <source>taken by hand</source>
        <translation>手工编辑</translation>
    </message>
    <message>
        <source>by you</source>
        <translation>您</translation>
    </message>
    <message>
        <source>without asking</source>
        <translation>自动</translation>
    </message>
    <message>
        <source>Both versions inserted the same lines here; the result has them once</source>
        <translation>两个版本在此插入了相同的行；结果中保留一次</translation>
    </message>
    <message>
        <source>The other version inserted the same lines elsewhere; the result has them twice</source>
        <translation>另一版本在别处插入了相同的行；结果中出现两次</translation>
    </message>
    <message>
        <source>Table compare(&amp;T)</source>
        <translation>表格比较(&amp;T)</translation>
    </message>
    <message>
        <source>Table compare</source>
        <translation>表格比较</translation>
    </message>
    <message>
        <source>Table compare %1</source>
        <translation>表格比较 %1</translation>
    </message>
    <message>
        <source>Compare two CSV or TSV tables cell by cell.</source>
        <translation>逐个单元格比较两个 CSV 或 TSV 表格。</translation>
    </message>
    <message>
        <source>Save the rows that differ as HTML or CSV</source>
        <translation>将有差异的行保存为 HTML 或 CSV</translation>
    </message>
    <message>
        <source>Find text in the cells of both tables</source>
        <translation>在两个表格的单元格中查找文本</translation>
    </message>
    <message>
        <source>Find in the cells</source>
        <translation>在单元格中查找</translation>
    </message>
    <message>
        <source>Use %1</source>
        <translation>使用%1</translation>
    </message>
    <message>
        <source>Compare again with this delimiter</source>
        <translation>使用此分隔符重新比较</translation>
    </message>
    <message>
        <source>The fields seem to be separated by another character: %1</source>
        <translation>字段似乎由另一个字符分隔：%1</translation>
    </message>
    <message>
        <source>Changed cells: %1</source>
        <translation>有更改的单元格：%1</translation>
    </message>
    <message>
        <source>Key: rows with the same value are compared</source>
        <translation>键：比较值相同的行</translation>
    </message>
    <message>
        <source>Rule: %1</source>
        <translation>规则：%1</translation>
    </message>
    <message>
        <source>numbers</source>
        <translation>数字</translation>
    </message>
    <message>
        <source>numbers, within %1 %</source>
        <translation>数字，相差不超过 %1 %</translation>
    </message>
    <message>
        <source>numbers, within %1</source>
        <translation>数字，相差不超过 %1</translation>
    </message>
    <message>
        <source>dates, day first</source>
        <translation>日期，日在前</translation>
    </message>
    <message>
        <source>dates, month first</source>
        <translation>日期，月在前</translation>
    </message>
    <message>
        <source>not compared</source>
        <translation>不比较</translation>
    </message>
    <message>
        <source>any letter case</source>
        <translation>不分大小写</translation>
    </message>
    <message>
        <source>any white space</source>
        <translation>忽略空白</translation>
    </message>
    <message>
        <source>Which columns the card shows</source>
        <translation>卡片显示哪些列</translation>
    </message>
    <message>
        <source>All columns</source>
        <translation>所有列</translation>
    </message>
    <message>
        <source>Differing columns first</source>
        <translation>不同的列在前</translation>
    </message>
    <message>
        <source>Only differing columns</source>
        <translation>仅不同的列</translation>
    </message>
    <message>
        <source>Values of the current row</source>
        <translation>当前行的值</translation>
    </message>
    <message>
        <source>Row %1, left only</source>
        <translation>第 %1 行，仅左侧有</translation>
    </message>
    <message>
        <source>Row %1, right only</source>
        <translation>第 %1 行，仅右侧有</translation>
    </message>
    <message>
        <source>Left row %1, right row %2  |  Differing columns: %3</source>
        <translation>左侧第 %1 行，右侧第 %2 行  |  不同的列：%3</translation>
    </message>
    <message>
        <source>Row</source>
        <translation>行</translation>
    </message>
    <message>
        <source>Show all values of the current row below each other</source>
        <translation>逐列显示当前行的所有值</translation>
    </message>
    <message>
        <source>Column</source>
        <translation>列</translation>
    </message>
    <message>
        <source>Match columns by name</source>
        <translation>按名称匹配列</translation>
    </message>
    <message>
        <source>Columns</source>
        <translation>列</translation>
    </message>
    <message>
        <source>Choose keys, rules, and which columns are compared and shown</source>
        <translation>选择键、规则以及要比较和显示的列</translation>
    </message>
    <message>
        <source>Find a column by its name</source>
        <translation>按名称查找列</translation>
    </message>
    <message>
        <source>Compare columns of the same name, wherever they stand</source>
        <translation>比较同名的列，无论其位置</translation>
    </message>
    <message>
        <source>Reset all</source>
        <translation>全部重置</translation>
    </message>
    <message>
        <source>No keys, no rules, all columns shown and compared</source>
        <translation>没有键和规则，显示并比较所有列</translation>
    </message>
    <message>
        <source>Choose columns to give them a rule.</source>
        <translation>选择要设置规则的列。</translation>
    </message>
    <message>
        <source>Rule of "%1"</source>
        <translation>“%1”的规则</translation>
    </message>
    <message>
        <source>Rule of %1 columns</source>
        <translation>%1 列的规则</translation>
    </message>
    <message>
        <source>Where the column stands in the left table</source>
        <translation>该列在左表中的位置</translation>
    </message>
    <message>
        <source>Where the column stands in the right table</source>
        <translation>该列在右表中的位置</translation>
    </message>
    <message>
        <source>Key</source>
        <translation>键</translation>
    </message>
    <message>
        <source>Rows with the same values in the key columns are compared</source>
        <translation>比较键列的值相同的行</translation>
    </message>
    <message>
        <source>Whether differences in this column count</source>
        <translation>此列的差异是否计入</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>显示</translation>
    </message>
    <message>
        <source>Whether the column is shown</source>
        <translation>是否显示该列</translation>
    </message>
    <message>
        <source>Freeze</source>
        <translation>冻结</translation>
    </message>
    <message>
        <source>The column stands first and stays when the others scroll</source>
        <translation>该列排在最前，其他列滚动时保持不动</translation>
    </message>
    <message>
        <source>Rule</source>
        <translation>规则</translation>
    </message>
    <message>
        <source>Which values count as the same</source>
        <translation>哪些值视为相同</translation>
    </message>
    <message>
        <source>exact</source>
        <translation>完全相同</translation>
    </message>
    <message>
        <source>How many cells of the column differ</source>
        <translation>该列有多少单元格不同</translation>
    </message>
    <message>
        <source>Compare values as:</source>
        <translation>值的比较方式：</translation>
    </message>
    <message>
        <source>Numbers</source>
        <translation>数字</translation>
    </message>
    <message>
        <source>Dates, day before month</source>
        <translation>日期，日在月前</translation>
    </message>
    <message>
        <source>Dates, month before day</source>
        <translation>日期，月在日前</translation>
    </message>
    <message>
        <source>Numbers and dates count as the same however they are written</source>
        <translation>数字和日期无论写法如何，值相等即视为相同</translation>
    </message>
    <message>
        <source>Numbers that differ by no more than this count as the same</source>
        <translation>相差不超过此值的数字视为相同</translation>
    </message>
    <message>
        <source>Unit of the tolerance</source>
        <translation>容差的单位</translation>
    </message>
    <message>
        <source>absolute</source>
        <translation>绝对值</translation>
    </message>
    <message>
        <source>% of the larger number</source>
        <translation>%（占较大数的比例）</translation>
    </message>
    <message>
        <source>Ignore letter case</source>
        <translation>忽略大小写</translation>
    </message>
    <message>
        <source>Ignore white space</source>
        <translation>忽略空白</translation>
    </message>
    <message>
        <source>At the ends, and how much there is between words</source>
        <translation>首尾的空白，以及词间空白的多少</translation>
    </message>
    <message>
        <source>Leave out of the comparison</source>
        <translation>不参与比较</translation>
    </message>
    <message>
        <source>Hide</source>
        <translation>隐藏</translation>
    </message>
    <message>
        <source>Show all columns</source>
        <translation>显示所有列</translation>
    </message>
    <message>
        <source>Fit width to content</source>
        <translation>列宽适应内容</translation>
    </message>
    <message>
        <source>Fit all widths</source>
        <translation>所有列宽适应内容</translation>
    </message>
    <message>
        <source>Hidden columns: %1</source>
        <translation>隐藏的列：%1</translation>
    </message>
    <message>
        <source>Columns with rules: %1</source>
        <translation>有规则的列：%1</translation>
    </message>
    <message>
        <source>Rules of columns: %1</source>
        <translation>列的规则：%1</translation>
    </message>
    <message>
        <source>"%1": %2</source>
        <translation>“%1”：%2</translation>
    </message>
    <message>
        <source>There is no column to match rows by: %1.</source>
        <translation>没有用于匹配行的列：%1。</translation>
    </message>
    <message>
        <source>Some rows have more fields than the first one has names: what stands behind the last column is not compared.</source>
        <translation>有些行的字段比首行的列名多：最后一列之后的内容不参与比较。</translation>
    </message>
    <message>
        <source>Duplicate keys</source>
        <translation>重复的键</translation>
    </message>
    <message>
        <source>Of the rows with one key the last is compared; the others are left out.</source>
        <translation>键相同的行中比较最后一行，其余行不参与比较。</translation>
    </message>
    <message>
        <source>Side</source>
        <translation>侧</translation>
    </message>
    <message>
        <source>Rows</source>
        <translation>行数</translation>
    </message>
    <message>
        <source>Row numbers</source>
        <translation>行号</translation>
    </message>
    <message>
        <source>%1 (compared)</source>
        <translation>%1（参与比较）</translation>
    </message>
    <message>
        <source>Go to row</source>
        <translation>转到行</translation>
    </message>
    <message>
        <source>List...</source>
        <translation>列表...</translation>
    </message>
    <message>
        <source>Show which rows have the same key</source>
        <translation>显示哪些行的键相同</translation>
    </message>
    <message>
        <source>Match columns by position</source>
        <translation>按位置匹配列</translation>
    </message>
    <message>
        <source>Compare again</source>
        <translation>重新比较</translation>
    </message>
    <message>
        <source>The columns are named differently; those of the same name are compared.</source>
        <translation>列名不同；同名的列相互比较。</translation>
    </message>
    <message>
        <source>Copy rows as CSV</source>
        <translation>将行复制为 CSV</translation>
    </message>
    <message>
        <source>Show rows that differ</source>
        <translation>显示有差异的行</translation>
    </message>
    <message>
        <source>Show rows that are the same</source>
        <translation>显示相同的行</translation>
    </message>
    <message>
        <source>Comma (,)</source>
        <translation>逗号 (,)</translation>
    </message>
    <message>
        <source>Tab (\t)</source>
        <translation>制表符 (\t)</translation>
    </message>
    <message>
        <source>Semicolon (;)</source>
        <translation>分号 (;)</translation>
    </message>
    <message>
        <source>Pipe (|)</source>
        <translation>竖线 (|)</translation>
    </message>
    <message>
        <source>Delimiter:</source>
        <translation>分隔符：</translation>
    </message>
    <message>
        <source>First row is header</source>
        <translation>首行为标题</translation>
    </message>
    <message>
        <source>Rows with the same value in this column are compared; takes effect at the next comparison</source>
        <translation>此列中值相同的行相互比较；下次比较时生效</translation>
    </message>
    <message>
        <source>Key column:</source>
        <translation>键列：</translation>
    </message>
    <message>
        <source>None (match by row order)</source>
        <translation>无（按行顺序匹配）</translation>
    </message>
    <message>
        <source>CSV/TSV (*.csv *.tsv *.txt);;All Files (*)</source>
        <translation>CSV/TSV (*.csv *.tsv *.txt);;所有文件 (*)</translation>
    </message>
    <message>
        <source>Left CSV/TSV file path...</source>
        <translation>左侧 CSV/TSV 文件路径...</translation>
    </message>
    <message>
        <source>Right CSV/TSV file path...</source>
        <translation>右侧 CSV/TSV 文件路径...</translation>
    </message>
    <message>
        <source>Same: %1  |  Modified: %2  |  Left only: %3  |  Right only: %4  |  Total rows: %5</source>
        <translation>相同：%1  |  已修改：%2  |  仅左侧：%3  |  仅右侧：%4  |  总行数：%5</translation>
    </message>
    <message>
        <source>Velmora — table report</source>
        <translation>Velmora — 表格报告</translation>
    </message>
    <message>
        <source>Left row</source>
        <translation>左侧行</translation>
    </message>
    <message>
        <source>Right row</source>
        <translation>右侧行</translation>
    </message>
    <message>
        <source>Export table report</source>
        <translation>导出表格报告</translation>
    </message>
    <message>
        <source>Close this remark</source>
        <translation>关闭此提示</translation>
    </message>
    <message>
        <source>File too large (limit %1 MB)</source>
        <translation>文件过大（上限 %1 MB）</translation>
    </message>
    <message>
        <source>Cannot read file</source>
        <translation>无法读取文件</translation>
    </message>
    <message>
        <source>Match by &quot;%1&quot;</source>
        <translation>按“%1”匹配</translation>
    </message>
    <message>
        <source>Compare again, pairing the rows with the same value in this column</source>
        <translation>重新比较，将此列中值相同的行配对</translation>
    </message>
    <message>
        <source>The values of the column &quot;%1&quot; are nearly all different: rows can be matched by them, wherever they stand.</source>
        <translation>列“%1”的值几乎各不相同：无论行在何处，都可按这些值匹配。</translation>
    </message>
    <message>
        <source>%1, hidden by the filter</source>
        <translation>%1，被筛选隐藏</translation>
    </message>
    <message>
        <source>Drop two tables here or choose them above, then press &quot;Table compare&quot;.</source>
        <translation>将两个表格拖放到此处，或在上方选择，然后点击“表格比较”。</translation>
    </message>
    <message>
        <source>The tables have no rows.</source>
        <translation>表格没有行。</translation>
    </message>
    <message>
        <source>No rows differ.</source>
        <translation>没有有差异的行。</translation>
    </message>
    <message>
        <source>No rows are the same.</source>
        <translation>没有相同的行。</translation>
    </message>
    <message>
        <source>HTML (*.html);;CSV (*.csv)</source>
        <translation>HTML (*.html);;CSV (*.csv)</translation>
    </message>
    <message>
        <source>Left table</source>
        <translation>左侧表格</translation>
    </message>
    <message>
        <source>Right table</source>
        <translation>右侧表格</translation>
    </message>
    <message>
        <source>%1 (rows %2)</source>
        <translation>%1（第 %2 行）</translation>
    </message>
    <message>
        <source>Left out, since a later row has the same key: %1 on the left.</source>
        <translation>因后面的行键值相同而未显示：左侧 %1。</translation>
    </message>
    <message>
        <source>Left out, since a later row has the same key: %1 on the right.</source>
        <translation>因后面的行键值相同而未显示：右侧 %1。</translation>
    </message>
    <message>
        <source>Left out, since a later row has the same key: %1 on the left, %2 on the right.</source>
        <translation>因后面的行键值相同而未显示：左侧 %1，右侧 %2。</translation>
    </message>
    <message>
        <source>The left file cannot be read and counts as empty: %1</source>
        <translation>左侧文件无法读取，视为空：%1</translation>
    </message>
    <message>
        <source>The right file cannot be read and counts as empty: %1</source>
        <translation>右侧文件无法读取，视为空：%1</translation>
    </message>
    <message>
        <source>The columns are named differently; cells are compared by their position.</source>
        <translation>列名不同；单元格按位置比较。</translation>
    </message>
    <message>
        <source>Only the first %1 of %2 columns are shown.</source>
        <translation>仅显示前 %1 列，共 %2 列。</translation>
    </message>
    <message>
        <source>%1 (guessed)</source>
        <translation>%1（推测）</translation>
    </message>
    <message>
        <source>%1 places are not readable in it</source>
        <translation>其中 %1 处无法解读</translation>
    </message>
    <message>
        <source>Hex compare(&amp;H)</source>
        <translation>十六进制比较(&amp;H)</translation>
    </message>
    <message>
        <source>Hex compare</source>
        <translation>十六进制比较</translation>
    </message>
    <message>
        <source>Binary compare %1</source>
        <translation>二进制比较 %1</translation>
    </message>
    <message>
        <source>Binary compare</source>
        <translation>二进制比较</translation>
    </message>
    <message>
        <source>Go to offset</source>
        <translation>转到偏移</translation>
    </message>
    <message>
        <source>%1 is behind the end of this side, which has %2 bytes</source>
        <translation>%1 超出此侧文件的末尾，该文件有 %2 字节</translation>
    </message>
    <message>
        <source>Go to a place in the file by its offset</source>
        <translation>按偏移转到文件中的位置</translation>
    </message>
    <message>
        <source>Offset (1234, 0x4D2 or 4D2h; +/- counts from the caret):</source>
        <translation>偏移（1234、0x4D2 或 4D2h；+/- 从光标算起）：</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no offset</source>
        <translation>“%1”不是偏移</translation>
    </message>
    <message>
        <source>Copy as hex</source>
        <translation>复制为十六进制</translation>
    </message>
    <message>
        <source>Copy as text</source>
        <translation>复制为文本</translation>
    </message>
    <message>
        <source>Copy as C array</source>
        <translation>复制为 C 数组</translation>
    </message>
    <message>
        <source>Too much to copy (limit %1 MB)</source>
        <translation>复制的内容过多（上限 %1 MB）</translation>
    </message>
    <message>
        <source>Some of these bytes cannot be read</source>
        <translation>其中有些字节无法读取</translation>
    </message>
    <message>
        <source>Find bytes or text in the side that the caret is in</source>
        <translation>在光标所在一侧查找字节或文本</translation>
    </message>
    <message>
        <source>Align</source>
        <translation>对齐</translation>
    </message>
    <message>
        <source>Find bytes again that have moved, behind others that were inserted or deleted</source>
        <translation>重新找到因插入或删除而移动的字节</translation>
    </message>
    <message>
        <source>Shift the sides</source>
        <translation>错开两侧</translation>
    </message>
    <message>
        <source>Choose the offsets from which on the sides are compared</source>
        <translation>选择两侧从哪个偏移开始比较</translation>
    </message>
    <message>
        <source>Compare this side from here on</source>
        <translation>此侧从这里开始比较</translation>
    </message>
    <message>
        <source>List of differences</source>
        <translation>差异列表</translation>
    </message>
    <message>
        <source>Show the ranges that differ as a list</source>
        <translation>以列表显示不同的区段</translation>
    </message>
    <message>
        <source>Values</source>
        <translation>数值</translation>
    </message>
    <message>
        <source>Show what the bytes at the caret mean as numbers, times and characters</source>
        <translation>显示光标处字节作为数字、时间和字符的含义</translation>
    </message>
    <message>
        <source>Compare done: left %1 bytes, right %2 bytes, %3 differing ranges | changed %4, inserted %5, deleted %6</source>
        <translation>比较完成：左 %1 字节，右 %2 字节，%3 个不同区段 | 更改 %4，插入 %5，删除 %6</translation>
    </message>
    <message>
        <source> | too many to tell: the last range is the rest of the files</source>
        <translation> | 区段过多：最后一个区段为文件的其余部分</translation>
    </message>
    <message>
        <source>The sides must begin at offsets such as 1234, 0x4D2 or 4D2h</source>
        <translation>两侧的起点必须是偏移，例如 1234、0x4D2 或 4D2h</translation>
    </message>
    <message>
        <source>Difference</source>
        <translation>差异</translation>
    </message>
    <message>
        <source>Left offset</source>
        <translation>左侧偏移</translation>
    </message>
    <message>
        <source>Left bytes</source>
        <translation>左侧字节数</translation>
    </message>
    <message>
        <source>Right offset</source>
        <translation>右侧偏移</translation>
    </message>
    <message>
        <source>Right bytes</source>
        <translation>右侧字节数</translation>
    </message>
    <message>
        <source>deleted</source>
        <translation>已删除</translation>
    </message>
    <message>
        <source>inserted</source>
        <translation>已插入</translation>
    </message>
    <message>
        <source>changed</source>
        <translation>已更改</translation>
    </message>
    <message>
        <source>Ranges that differ</source>
        <translation>不同的区段</translation>
    </message>
    <message>
        <source>Hex bytes</source>
        <translation>十六进制字节</translation>
    </message>
    <message>
        <source>Text (UTF-8)</source>
        <translation>文本 (UTF-8)</translation>
    </message>
    <message>
        <source>Text (UTF-16)</source>
        <translation>文本 (UTF-16)</translation>
    </message>
    <message>
        <source>How the bytes that are looked for are written</source>
        <translation>要查找的字节的书写方式</translation>
    </message>
    <message>
        <source>Pairs of hexadecimal digits are needed, as in &quot;4D 5A&quot;</source>
        <translation>需要成对的十六进制数字，例如“4D 5A”</translation>
    </message>
    <message>
        <source>Nothing to look for</source>
        <translation>没有要查找的内容</translation>
    </message>
    <message>
        <source>Not found</source>
        <translation>未找到</translation>
    </message>
    <message>
        <source>Found by starting over from the other end</source>
        <translation>从另一端重新开始后找到</translation>
    </message>
    <message>
        <source>Compare both sides from their beginnings</source>
        <translation>两侧都从开头比较</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>重置</translation>
    </message>
    <message>
        <source>Left from:</source>
        <translation>左侧起点：</translation>
    </message>
    <message>
        <source>Right from:</source>
        <translation>右侧起点：</translation>
    </message>
    <message>
        <source>1234, 0x4D2 or 4D2h</source>
        <translation>1234、0x4D2 或 4D2h</translation>
    </message>
    <message>
        <source>8 bits, signed</source>
        <translation>8 位有符号</translation>
    </message>
    <message>
        <source>8 bits, unsigned</source>
        <translation>8 位无符号</translation>
    </message>
    <message>
        <source>16 bits, signed</source>
        <translation>16 位有符号</translation>
    </message>
    <message>
        <source>16 bits, unsigned</source>
        <translation>16 位无符号</translation>
    </message>
    <message>
        <source>32 bits, signed</source>
        <translation>32 位有符号</translation>
    </message>
    <message>
        <source>32 bits, unsigned</source>
        <translation>32 位无符号</translation>
    </message>
    <message>
        <source>64 bits, signed</source>
        <translation>64 位有符号</translation>
    </message>
    <message>
        <source>64 bits, unsigned</source>
        <translation>64 位无符号</translation>
    </message>
    <message>
        <source>Float, 32 bits</source>
        <translation>32 位浮点数</translation>
    </message>
    <message>
        <source>Float, 64 bits</source>
        <translation>64 位浮点数</translation>
    </message>
    <message>
        <source>Unix time, 32 bits</source>
        <translation>32 位 Unix 时间</translation>
    </message>
    <message>
        <source>Unix time, 64 bits</source>
        <translation>64 位 Unix 时间</translation>
    </message>
    <message>
        <source>Windows file time</source>
        <translation>Windows 文件时间</translation>
    </message>
    <message>
        <source>DOS date and time</source>
        <translation>DOS 日期和时间</translation>
    </message>
    <message>
        <source>UTF-8 character</source>
        <translation>UTF-8 字符</translation>
    </message>
    <message>
        <source>UTF-16 character</source>
        <translation>UTF-16 字符</translation>
    </message>
    <message>
        <source>Bits</source>
        <translation>二进制位</translation>
    </message>
    <message>
        <source>What the bytes at the caret mean</source>
        <translation>光标处字节的含义</translation>
    </message>
    <message>
        <source>Left, little endian</source>
        <translation>左，小端</translation>
    </message>
    <message>
        <source>Left, big endian</source>
        <translation>左，大端</translation>
    </message>
    <message>
        <source>Right, little endian</source>
        <translation>右，小端</translation>
    </message>
    <message>
        <source>Right, big endian</source>
        <translation>右，大端</translation>
    </message>
    <message>
        <source>%1 | %2 bytes selected</source>
        <translation>%1 | 已选 %2 字节</translation>
    </message>
    <message>
        <source>Bytes of the left file</source>
        <translation>左侧文件的字节</translation>
    </message>
    <message>
        <source>Bytes of the right file</source>
        <translation>右侧文件的字节</translation>
    </message>
    <message>
        <source>Compare done: files are identical</source>
        <translation>比较完成：文件相同</translation>
    </message>
    <message>
        <source>Compare done: left %1 bytes, right %2 bytes, %3 diffs | diff rate: %4%</source>
        <translation>比较完成：左 %1 字节，右 %2 字节，%3 处差异 | 差异率：%4%</translation>
    </message>
    <message>
        <source> | diff list capped at %1 for navigation</source>
        <translation> | 导航用差异列表上限 %1</translation>
    </message>
    <message>
        <source>File too large (limit %1 GB). Use folder compare or checksum first</source>
        <translation>文件过大（上限 %1 GB）。请先使用文件夹比较或校验和</translation>
    </message>
    <message>
        <source>Cannot open left file</source>
        <translation>无法打开左侧文件</translation>
    </message>
    <message>
        <source>Cannot open right file</source>
        <translation>无法打开右侧文件</translation>
    </message>
    <message>
        <source>Paths loaded — click Binary compare to start</source>
        <translation>路径已载入，点击“二进制比较”开始</translation>
    </message>
    <message>
        <source>Select two files to compare</source>
        <translation>请选择要比较的两个文件</translation>
    </message>
    <message>
        <source>Compare two files of any kind byte by byte.</source>
        <translation>逐字节比较任意类型的两个文件。</translation>
    </message>
    <message>
        <source>Image compare(&amp;P)</source>
        <translation>图像比较(&amp;P)</translation>
    </message>
    <message>
        <source>Image compare</source>
        <translation>图像比较</translation>
    </message>
    <message>
        <source>Image compare %1</source>
        <translation>图像比较 %1</translation>
    </message>
    <message>
        <source>Compare two pictures pixel by pixel, with a tolerance.</source>
        <translation>按设定的容差逐像素比较两幅图像。</translation>
    </message>
    <message>
        <source>MP3 compare(&amp;M)</source>
        <translation>MP3 比较(&amp;M)</translation>
    </message>
    <message>
        <source>MP3 compare</source>
        <translation>MP3 比较</translation>
    </message>
    <message>
        <source>MP3 compare %1</source>
        <translation>MP3 比较 %1</translation>
    </message>
    <message>
        <source>Compare the tags and the sound of two pieces of music.</source>
        <translation>比较两个音乐文件的标签和声音。</translation>
    </message>
    <message>
        <source>Folder merge(&amp;O)</source>
        <translation>文件夹合并(&amp;O)</translation>
    </message>
    <message>
        <source>Folder merge</source>
        <translation>文件夹合并</translation>
    </message>
    <message>
        <source>Folder merge %1</source>
        <translation>文件夹合并 %1</translation>
    </message>
    <message>
        <source>Base folder:</source>
        <translation>基础文件夹:</translation>
    </message>
    <message>
        <source>Common ancestor / base version…</source>
        <translation>共同祖先 / 基础版本…</translation>
    </message>
    <message>
        <source>Browse the base folder</source>
        <translation>浏览基础文件夹</translation>
    </message>
    <message>
        <source>Left (mine):</source>
        <translation>左侧 (我的):</translation>
    </message>
    <message>
        <source>Local modified version…</source>
        <translation>本地修改版本…</translation>
    </message>
    <message>
        <source>Right (theirs):</source>
        <translation>右侧 (他人的):</translation>
    </message>
    <message>
        <source>Remote modified version…</source>
        <translation>远程修改版本…</translation>
    </message>
    <message>
        <source>Enter paths for all three folders</source>
        <translation>请输入全部三个文件夹的路径</translation>
    </message>
    <message>
        <source>%1 file(s), %2 changed, %3 conflict(s)</source>
        <translation>%1 个文件，%2 个有变化，%3 个冲突</translation>
    </message>
    <message>
        <source>Three-way merge: %1</source>
        <translation>三方合并：%1</translation>
    </message>
    <message>
        <source>Open conflicts: %1</source>
        <translation>未解决的冲突：%1</translation>
    </message>
    <message>
        <source>Some folders could not be read; their files count as deleted</source>
        <translation>部分文件夹无法读取；其中的文件按已删除处理</translation>
    </message>
    <message>
        <source>Files of the merge</source>
        <translation>参与合并的文件</translation>
    </message>
    <message>
        <source>Conflicts only</source>
        <translation>仅冲突</translation>
    </message>
    <message>
        <source>Added only</source>
        <translation>仅新增</translation>
    </message>
    <message>
        <source>Deleted only</source>
        <translation>仅删除</translation>
    </message>
    <message>
        <source>File path</source>
        <translation>文件路径</translation>
    </message>
    <message>
        <source>Base size</source>
        <translation>基础大小</translation>
    </message>
    <message>
        <source>✗ Leave out</source>
        <translation>✗ 不写入</translation>
    </message>
    <message>
        <source>✓ Merged text</source>
        <translation>✓ 合并后的文本</translation>
    </message>
    <message>
        <source>Writing the merged tree…</source>
        <translation>正在写入合并后的目录树…</translation>
    </message>
    <message>
        <source>Merged text</source>
        <translation>合并后的文本</translation>
    </message>
    <message>
        <source>%1 has a merged text already. Look at it, or merge the three versions anew? The text stays until another is saved.</source>
        <translation>%1 已有合并后的文本。查看它，还是重新合并三个版本？在保存新文本之前，现有文本保持不变。</translation>
    </message>
    <message>
        <source>&amp;Look at it</source>
        <translation>查看(&amp;L)</translation>
    </message>
    <message>
        <source>&amp;Merge anew</source>
        <translation>重新合并(&amp;M)</translation>
    </message>
    <message>
        <source>Select the folder</source>
        <translation>选择所在文件夹</translation>
    </message>
    <message>
        <source>Select all files of the current one's folder; again, of the folder around it</source>
        <translation>选择当前文件所在文件夹的所有文件；再次执行则选择上一级文件夹</translation>
    </message>
    <message>
        <source>Take merged texts</source>
        <translation>采用合并后的文本</translation>
    </message>
    <message>
        <source>Has the merged tree get the texts that both versions make together</source>
        <translation>合并结果采用两个版本合并而成的文本</translation>
    </message>
    <message>
        <source>Conflicts that merge cleanly line by line: %1</source>
        <translation>可逐行合并解决的冲突：%1</translation>
    </message>
    <message>
        <source>Merged by hand: %1</source>
        <translation>已手动合并：%1</translation>
    </message>
    <message>
        <source>Merge to...</source>
        <translation>合并到...</translation>
    </message>
    <message>
        <source>Write the merged tree into a folder</source>
        <translation>将合并结果写入文件夹</translation>
    </message>
    <message>
        <source>See what both versions have made of each file of the base</source>
        <translation>查看两个版本对基础中每个文件所做的更改</translation>
    </message>
    <message>
        <source>Take the last merge of this tab back</source>
        <translation>撤销此标签页的上一次合并</translation>
    </message>
    <message>
        <source>Take left</source>
        <translation>取左侧</translation>
    </message>
    <message>
        <source>Take the left version of the selected files</source>
        <translation>对选中的文件取左侧版本</translation>
    </message>
    <message>
        <source>Take base</source>
        <translation>取基础</translation>
    </message>
    <message>
        <source>Take the base's version of the selected files</source>
        <translation>对选中的文件取基础版本</translation>
    </message>
    <message>
        <source>Take right</source>
        <translation>取右侧</translation>
    </message>
    <message>
        <source>Take the right version of the selected files</source>
        <translation>对选中的文件取右侧版本</translation>
    </message>
    <message>
        <source>Leave out</source>
        <translation>不写入</translation>
    </message>
    <message>
        <source>Leave the selected files out of the merged tree</source>
        <translation>不将选中的文件写入合并结果</translation>
    </message>
    <message>
        <source>As found</source>
        <translation>按比较结果</translation>
    </message>
    <message>
        <source>Open in Text merge</source>
        <translation>在文本合并中打开</translation>
    </message>
    <message>
        <source>Merge the three versions of the current file by hand (Enter)</source>
        <translation>手动合并当前文件的三个版本 (Enter)</translation>
    </message>
    <message>
        <source>A folder and two versions of it</source>
        <translation>一个文件夹和它的两个版本</translation>
    </message>
    <message>
        <source>Drop the three here or enter their paths above, then press Compare (F5). The merged tree goes into a folder of its own; these three stay as they are.</source>
        <translation>将三者拖放到此处，或在上方输入路径，然后按“比较” (F5)。合并结果写入单独的文件夹；这三个文件夹保持不变。</translation>
    </message>
    <message>
        <source>There are no files in these folders.</source>
        <translation>这些文件夹中没有文件。</translation>
    </message>
    <message>
        <source>No file is of this kind.</source>
        <translation>没有此类文件。</translation>
    </message>
    <message>
        <source>Looking at the target folder…</source>
        <translation>正在查看目标文件夹…</translation>
    </message>
    <message>
        <source>There are files of the same names in %1. Replace them?</source>
        <translation>%1 中有同名文件。要替换它们吗？</translation>
    </message>
    <message>
        <source>&amp;Merge</source>
        <translation>合并(&amp;M)</translation>
    </message>
    <message>
        <source>The merge is still running. Stop it after the current file and close?</source>
        <translation>合并仍在进行。要在当前文件完成后停止并关闭吗？</translation>
    </message>
    <message>
        <source>Merge two versions of a folder that come from one base.</source>
        <translation>合并源自同一基准的两个文件夹版本。</translation>
    </message>
    <message>
        <source>Folder sync(&amp;Y)</source>
        <translation>文件夹同步(&amp;Y)</translation>
    </message>
    <message>
        <source>Folder sync</source>
        <translation>文件夹同步</translation>
    </message>
    <message>
        <source>Folder sync %1</source>
        <translation>文件夹同步 %1</translation>
    </message>
    <message>
        <source>Sync %1 &lt;-&gt; %2</source>
        <translation>同步 %1 &lt;-&gt; %2</translation>
    </message>
    <message>
        <source>Left → Right</source>
        <translation>左 → 右</translation>
    </message>
    <message>
        <source>Right → Left</source>
        <translation>右 → 左</translation>
    </message>
    <message>
        <source>Mirror sync</source>
        <translation>镜像同步</translation>
    </message>
    <message>
        <source>Update newer</source>
        <translation>更新较新的</translation>
    </message>
    <message>
        <source>Make the right side like the left; what only the right has is deleted</source>
        <translation>使右侧与左侧一致；仅右侧有的内容将被删除</translation>
    </message>
    <message>
        <source>Make the left side like the right; what only the left has is deleted</source>
        <translation>使左侧与右侧一致；仅左侧有的内容将被删除</translation>
    </message>
    <message>
        <source>Copy both ways; of changed files the newer wins, of equal times the right one</source>
        <translation>双向复制；有变化的文件以较新者为准，时间相同则以右侧为准</translation>
    </message>
    <message>
        <source>Copy both ways; of changed files the newer wins, of equal times none</source>
        <translation>双向复制；有变化的文件以较新者为准，时间相同则不处理</translation>
    </message>
    <message>
        <source>File name filter pattern</source>
        <translation>文件名过滤模式</translation>
    </message>
    <message>
        <source>All files</source>
        <translation>所有文件</translation>
    </message>
    <message>
        <source>Read files of the same size and time, too, at the next analysis</source>
        <translation>下次分析时也读取大小和时间相同的文件</translation>
    </message>
    <message>
        <source>Find moved and renamed files</source>
        <translation>查找移动和重命名的文件</translation>
    </message>
    <message>
        <source>More</source>
        <translation>更多</translation>
    </message>
    <message>
        <source>Read files that are on one side only, and move those that the other side has elsewhere instead of copying and deleting them</source>
        <translation>读取仅一侧存在的文件；另一侧在别处有相同内容时，移动文件而不是复制再删除</translation>
    </message>
    <message>
        <source>Ignore whole hours between times</source>
        <translation>忽略相差整小时的时间</translation>
    </message>
    <message>
        <source>Files of equal size whose times are whole hours apart count as equal without being read, and neither of two such files is newer</source>
        <translation>大小相同、时间相差整小时的文件不读取内容即视为相同，且两者都不算较新</translation>
    </message>
    <message>
        <source>Look for moved files</source>
        <translation>查找移动的文件</translation>
    </message>
    <message>
        <source>Reads them, and moves what has the same contents instead of copying and deleting</source>
        <translation>读取这些文件，内容相同的改为移动，而不是复制再删除</translation>
    </message>
    <message>
        <source>Ignore whole hours</source>
        <translation>忽略整小时</translation>
    </message>
    <message>
        <source>Counts such times as equal: files of equal size are not read then, and neither of two files is newer</source>
        <translation>将这样的时间视为相同：大小相同的文件不再读取，且两者都不算较新</translation>
    </message>
    <message>
        <source>List them</source>
        <translation>列出</translation>
    </message>
    <message>
        <source>Writes the names into the log below the plan</source>
        <translation>将这些名称写入计划下方的日志</translation>
    </message>
    <message>
        <source>Names in conflict with others, or on other systems: %1</source>
        <translation>与其他名称冲突或在其他系统上无法使用的名称：%1</translation>
    </message>
    <message>
        <source>Files that may only have been moved or renamed: %1</source>
        <translation>可能只是被移动或重命名的文件：%1</translation>
    </message>
    <message>
        <source>Files whose times are whole hours apart on the two sides: %1</source>
        <translation>两侧时间相差整小时的文件：%1</translation>
    </message>
    <message>
        <source>Move on right</source>
        <translation>在右侧移动</translation>
    </message>
    <message>
        <source>Move on left</source>
        <translation>在左侧移动</translation>
    </message>
    <message>
        <source>↷ Move on right</source>
        <translation>↷ 在右侧移动</translation>
    </message>
    <message>
        <source>↷ Move on left</source>
        <translation>↷ 在左侧移动</translation>
    </message>
    <message>
        <source>  ✗ Move failed: %1</source>
        <translation>  ✗ 移动失败：%1</translation>
    </message>
    <message>
        <source>  ↷ Moved on right: %1</source>
        <translation>  ↷ 已在右侧移动：%1</translation>
    </message>
    <message>
        <source>  ↷ Moved on left: %1</source>
        <translation>  ↷ 已在左侧移动：%1</translation>
    </message>
    <message>
        <source> | Move: %1</source>
        <translation> | 移动：%1</translation>
    </message>
    <message>
        <source>%1 (from %2)</source>
        <translation>%1（来自 %2）</translation>
    </message>
    <message>
        <source>%1 looks like %2, and is written in other Unicode characters</source>
        <translation>%1 与 %2 看起来相同，但 Unicode 写法不同</translation>
    </message>
    <message>
        <source>%1 has a name that Windows cannot hold</source>
        <translation>%1 的名称在 Windows 上无法使用</translation>
    </message>
    <message>
        <source>%1 has a name that is too long for most file systems</source>
        <translation>%1 的名称对大多数文件系统来说太长</translation>
    </message>
    <message>
        <source>%1 and %2 are one name where the case of letters does not count</source>
        <translation>在不区分大小写的系统上，%1 与 %2 是同一个名称</translation>
    </message>
    <message>
        <source> Filter: </source>
        <translation> 过滤: </translation>
    </message>
    <message>
        <source> Direction: </source>
        <translation> 方向: </translation>
    </message>
    <message>
        <source>Sync plan</source>
        <translation>同步计划</translation>
    </message>
    <message>
        <source>Enter folder paths on both sides.</source>
        <translation>请输入两侧的文件夹路径。</translation>
    </message>
    <message>
        <source>Left folder does not exist: %1</source>
        <translation>左侧文件夹不存在：%1</translation>
    </message>
    <message>
        <source>Right folder does not exist: %1</source>
        <translation>右侧文件夹不存在：%1</translation>
    </message>
    <message>
        <source>Scanning folders…</source>
        <translation>正在扫描文件夹…</translation>
    </message>
    <message>
        <source>Comparing…</source>
        <translation>正在比较…</translation>
    </message>
    <message>
        <source>Analysis cancelled.</source>
        <translation>分析已取消。</translation>
    </message>
    <message>
        <source>Cancelling analysis…</source>
        <translation>正在取消分析…</translation>
    </message>
    <message>
        <source>Scan complete. %1 item(s) to sync.</source>
        <translation>扫描完成。有 %1 项需要同步。</translation>
    </message>
    <message>
        <source> (filter: %1 of %2 shown)</source>
        <translation> (过滤：显示 %2 项中的 %1 项)</translation>
    </message>
    <message>
        <source>Two folders that should agree</source>
        <translation>两个应当一致的文件夹</translation>
    </message>
    <message>
        <source>Drop them here or enter their paths above, then press Analyze (F5). Nothing is changed before you have seen the plan.</source>
        <translation>将它们拖放到此处，或在上方输入路径，然后按“分析” (F5)。在您看到计划之前不会更改任何内容。</translation>
    </message>
    <message>
        <source>The filter hides the whole plan.</source>
        <translation>过滤器隐藏了整个计划。</translation>
    </message>
    <message>
        <source>Both folders agree.</source>
        <translation>两个文件夹一致。</translation>
    </message>
    <message>
        <source>No sync actions to run.</source>
        <translation>没有要执行的同步操作。</translation>
    </message>
    <message>
        <source>Confirm sync</source>
        <translation>确认同步</translation>
    </message>
    <message>
        <source>About to run %1 sync action(s). Continue?</source>
        <translation>即将执行 %1 个同步操作。是否继续？</translation>
    </message>
    <message>
        <source>What the filter hides is left as it is.</source>
        <translation>被过滤器隐藏的内容保持不变。</translation>
    </message>
    <message>
        <source>Deletions among them: %1</source>
        <translation>其中删除：%1</translation>
    </message>
    <message>
        <source>What is deleted is deleted for good.</source>
        <translation>删除的内容将被永久删除。</translation>
    </message>
    <message>
        <source>Sync all the same?</source>
        <translation>仍要同步吗？</translation>
    </message>
    <message>
        <source>Starting sync…</source>
        <translation>正在开始同步…</translation>
    </message>
    <message>
        <source>Sync complete. Success: %1, failed: %2</source>
        <translation>同步完成。成功：%1，失败：%2</translation>
    </message>
    <message>
        <source>There is no recycle bin for some of the entries, so that they are still there. Have the next run of this tab delete for good?</source>
        <translation>部分条目所在位置没有回收站，因此它们仍然存在。要让此标签页的下一次同步永久删除吗？</translation>
    </message>
    <message>
        <source>The sync is still running. Stop it after the current file and close?</source>
        <translation>同步仍在进行。要在当前文件完成后停止并关闭吗？</translation>
    </message>
    <message>
        <source>Analyze</source>
        <translation>分析</translation>
    </message>
    <message>
        <source>Scan folders and build a sync plan</source>
        <translation>扫描文件夹并生成同步计划</translation>
    </message>
    <message>
        <source>Sync now</source>
        <translation>立即同步</translation>
    </message>
    <message>
        <source>Run sync actions</source>
        <translation>执行同步操作</translation>
    </message>
    <message>
        <source>Take the last sync of this tab back</source>
        <translation>撤销此标签页的上一次同步</translation>
    </message>
    <message>
        <source>Copy to right</source>
        <translation>复制到右侧</translation>
    </message>
    <message>
        <source>Have the selected entries copied to the right</source>
        <translation>将选中的条目复制到右侧</translation>
    </message>
    <message>
        <source>Copy to left</source>
        <translation>复制到左侧</translation>
    </message>
    <message>
        <source>Have the selected entries copied to the left</source>
        <translation>将选中的条目复制到左侧</translation>
    </message>
    <message>
        <source>Delete where it is</source>
        <translation>在所在侧删除</translation>
    </message>
    <message>
        <source>Have the selected entries deleted that only one side has</source>
        <translation>删除选中条目中仅一侧有的条目</translation>
    </message>
    <message>
        <source>Skip</source>
        <translation>跳过</translation>
    </message>
    <message>
        <source>Leave the selected entries as they are</source>
        <translation>保持选中的条目不变</translation>
    </message>
    <message>
        <source>As planned</source>
        <translation>按计划</translation>
    </message>
    <message>
        <source>Give the selected entries the actions of the direction again</source>
        <translation>让选中的条目恢复为同步方向所定的操作</translation>
    </message>
    <message>
        <source>Compare the entry</source>
        <translation>比较该条目</translation>
    </message>
    <message>
        <source>File name</source>
        <translation>文件名</translation>
    </message>
    <message>
        <source>Action</source>
        <translation>操作</translation>
    </message>
    <message>
        <source>Left time</source>
        <translation>左侧时间</translation>
    </message>
    <message>
        <source>Right time</source>
        <translation>右侧时间</translation>
    </message>
    <message>
        <source>Delete right</source>
        <translation>删除右侧</translation>
    </message>
    <message>
        <source>Delete left</source>
        <translation>删除左侧</translation>
    </message>
    <message>
        <source>→ Copy to right</source>
        <translation>→ 复制到右侧</translation>
    </message>
    <message>
        <source>Both sides have this folder, so that it stays; what is in it has rows of its own.</source>
        <translation>两侧都有此文件夹，因此保留；其中的内容各有自己的行。</translation>
    </message>
    <message>
        <source>← Copy to left</source>
        <translation>← 复制到左侧</translation>
    </message>
    <message>
        <source>× Delete right</source>
        <translation>× 删除右侧</translation>
    </message>
    <message>
        <source>× Delete left</source>
        <translation>× 删除左侧</translation>
    </message>
    <message>
        <source>— Skip</source>
        <translation>— 跳过</translation>
    </message>
    <message>
        <source>  ✗ Delete failed: %1</source>
        <translation>  ✗ 删除失败：%1</translation>
    </message>
    <message>
        <source>  ✗ Copy failed: %1</source>
        <translation>  ✗ 复制失败：%1</translation>
    </message>
    <message>
        <source>  × Deleted on right: %1</source>
        <translation>  × 已在右侧删除：%1</translation>
    </message>
    <message>
        <source>  × Deleted on left: %1</source>
        <translation>  × 已在左侧删除：%1</translation>
    </message>
    <message>
        <source>Copy right: %1 | Copy left: %2 | Delete: %3 | Skip: %4 | Total: %5</source>
        <translation>复制到右：%1 | 复制到左：%2 | 删除：%3 | 跳过：%4 | 总计：%5</translation>
    </message>
    <message>
        <source>%1 has nothing in it, so that all %2 entries of %3 would be deleted. Is a drive missing?</source>
        <translation>%1 中没有任何内容，因此 %3 的全部 %2 个条目都将被删除。是否有驱动器未连接？</translation>
    </message>
    <message>
        <source>%1 of the %2 entries of %3 would be deleted.</source>
        <translation>%3 的 %2 个条目中有 %1 个将被删除。</translation>
    </message>
    <message>
        <source>Bring two folders to the same state, after a look at the plan.</source>
        <translation>先预览同步计划，再使两个文件夹保持一致。</translation>
    </message>
    <message>
        <source>Registry compare(&amp;R)</source>
        <translation>注册表比较(&amp;R)</translation>
    </message>
    <message>
        <source>Registry compare</source>
        <translation>注册表比较</translation>
    </message>
    <message>
        <source>Registry compare %1</source>
        <translation>注册表比较 %1</translation>
    </message>
    <message>
        <source>Compare the keys and values of two registry trees.</source>
        <translation>比较两棵注册表树的键和值。</translation>
    </message>
    <message>
        <source>Version compare(&amp;V)</source>
        <translation>版本信息比较(&amp;V)</translation>
    </message>
    <message>
        <source>Version compare</source>
        <translation>版本信息比较</translation>
    </message>
    <message>
        <source>Version compare %1</source>
        <translation>版本信息比较 %1</translation>
    </message>
    <message>
        <source>Compare the version information of two programs or libraries.</source>
        <translation>比较两个程序或库文件的版本信息。</translation>
    </message>
    <message>
        <source>Git compare(&amp;G)</source>
        <translation>Git 比较(&amp;G)</translation>
    </message>
    <message>
        <source>Git compare</source>
        <translation>Git 比较</translation>
    </message>
    <message>
        <source>Git compare %1</source>
        <translation>Git 比较 %1</translation>
    </message>
    <message>
        <source>Git: %1</source>
        <translation>Git：%1</translation>
    </message>
    <message>
        <source>Compare two states of a Git repository.</source>
        <translation>比较 Git 仓库的两个状态。</translation>
    </message>
    <message>
        <source>Repository:</source>
        <translation>仓库：</translation>
    </message>
    <message>
        <source>A folder of a Git repository, or a file in it</source>
        <translation>Git 仓库中的文件夹或文件</translation>
    </message>
    <message>
        <source>Select a Git repository</source>
        <translation>选择 Git 仓库</translation>
    </message>
    <message>
        <source>State on the left</source>
        <translation>左侧的状态</translation>
    </message>
    <message>
        <source>State on the right</source>
        <translation>右侧的状态</translation>
    </message>
    <message>
        <source>Branch, tag, commit, ...</source>
        <translation>分支、标签、提交，...</translation>
    </message>
    <message>
        <source>Branches</source>
        <translation>分支</translation>
    </message>
    <message>
        <source>Tags</source>
        <translation>标签</translation>
    </message>
    <message>
        <source>Stashes</source>
        <translation>贮藏</translation>
    </message>
    <message>
        <source>Branches of other repositories</source>
        <translation>其他仓库的分支</translation>
    </message>
    <message>
        <source>Recent</source>
        <translation>最近使用</translation>
    </message>
    <message>
        <source>Index</source>
        <translation>暂存区</translation>
    </message>
    <message>
        <source>Work tree</source>
        <translation>工作区</translation>
    </message>
    <message>
        <source>Folder...</source>
        <translation>文件夹...</translation>
    </message>
    <message>
        <source>The files as they are on the disk</source>
        <translation>磁盘上的文件现状</translation>
    </message>
    <message>
        <source>What the next commit would hold</source>
        <translation>下次提交将包含的内容</translation>
    </message>
    <message>
        <source>The commit that is checked out</source>
        <translation>当前检出的提交</translation>
    </message>
    <message>
        <source>Any folder of the disk</source>
        <translation>磁盘上的任意文件夹</translation>
    </message>
    <message>
        <source>Two states of a Git repository</source>
        <translation>Git 仓库的两个状态</translation>
    </message>
    <message>
        <source>Choose a repository above, or drop a folder of one here, then choose what to compare.</source>
        <translation>请在上方选择仓库，或将其文件夹拖到此处，再选择要比较的内容。</translation>
    </message>
    <message>
        <source>Compare the two states</source>
        <translation>比较两个状态</translation>
    </message>
    <message>
        <source>Since they parted</source>
        <translation>自分叉起</translation>
    </message>
    <message>
        <source>Compare the right side with the commit where it parted from the left one</source>
        <translation>将右侧与其和左侧分叉处的提交比较</translation>
    </message>
    <message>
        <source>New files</source>
        <translation>新文件</translation>
    </message>
    <message>
        <source>Show files of the work tree that the repository does not have yet; ignored ones stay left out</source>
        <translation>显示工作区中仓库尚未收录的文件；被忽略的文件不显示</translation>
    </message>
    <message>
        <source>Unchanged</source>
        <translation>未更改</translation>
    </message>
    <message>
        <source>Show files that are the same on both sides, too</source>
        <translation>同时显示两侧相同的文件</translation>
    </message>
    <message>
        <source>Commits</source>
        <translation>提交</translation>
    </message>
    <message>
        <source>Show the commits between the two sides</source>
        <translation>显示两侧之间的提交</translation>
    </message>
    <message>
        <source>Expand all</source>
        <translation>全部展开</translation>
    </message>
    <message>
        <source>Collapse all</source>
        <translation>全部折叠</translation>
    </message>
    <message>
        <source>Compare byte for byte</source>
        <translation>逐字节比较</translation>
    </message>
    <message>
        <source>Changed files</source>
        <translation>已更改的文件</translation>
    </message>
    <message>
        <source>Show files of this status: %1</source>
        <translation>显示此状态的文件：%1</translation>
    </message>
    <message>
        <source>Added</source>
        <translation>已添加</translation>
    </message>
    <message>
        <source>Deleted</source>
        <translation>已删除</translation>
    </message>
    <message>
        <source>Renamed</source>
        <translation>已重命名</translation>
    </message>
    <message>
        <source>Copied</source>
        <translation>已复制</translation>
    </message>
    <message>
        <source>Type changed</source>
        <translation>类型已更改</translation>
    </message>
    <message>
        <source>%1 (%2 % alike)</source>
        <translation>%1（%2 % 相似）</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>种类</translation>
    </message>
    <message>
        <source>Executable</source>
        <translation>可执行</translation>
    </message>
    <message>
        <source>Link</source>
        <translation>链接</translation>
    </message>
    <message>
        <source>Submodule</source>
        <translation>子模块</translation>
    </message>
    <message>
        <source>The content is the same</source>
        <translation>内容相同</translation>
    </message>
    <message>
        <source>1 file differs</source>
        <translation>1 个文件不同</translation>
    </message>
    <message>
        <source>%1 files differ</source>
        <translation>%1 个文件不同</translation>
    </message>
    <message>
        <source>No differences</source>
        <translation>没有差异</translation>
    </message>
    <message>
        <source>Both sides hold the same files.</source>
        <translation>两侧的文件相同。</translation>
    </message>
    <message>
        <source>Lines: +%1 −%2</source>
        <translation>行：+%1 −%2</translation>
    </message>
    <message>
        <source>Commit</source>
        <translation>提交</translation>
    </message>
    <message>
        <source>Author</source>
        <translation>作者</translation>
    </message>
    <message>
        <source>Id</source>
        <translation>标识</translation>
    </message>
    <message>
        <source>Find commits by words, author or id</source>
        <translation>按词语、作者或标识查找提交</translation>
    </message>
    <message>
        <source>Commits between the two sides</source>
        <translation>两侧之间的提交</translation>
    </message>
    <message>
        <source>1 commit between the two sides</source>
        <translation>两侧之间有 1 个提交</translation>
    </message>
    <message>
        <source>No commits between the two sides</source>
        <translation>两侧之间没有提交</translation>
    </message>
    <message>
        <source>%1 commits between the two sides</source>
        <translation>两侧之间有 %1 个提交</translation>
    </message>
    <message>
        <source>The latest %1 commits between the two sides</source>
        <translation>两侧之间最近的 %1 个提交</translation>
    </message>
    <message>
        <source>There are no commits between a commit and a folder</source>
        <translation>提交与文件夹之间没有提交</translation>
    </message>
    <message>
        <source>Commit %1 compared with its parent: %2</source>
        <translation>提交 %1 与其父提交的比较：%2</translation>
    </message>
    <message>
        <source>Back to both sides</source>
        <translation>返回两侧</translation>
    </message>
    <message>
        <source>Compare the states that the two fields name</source>
        <translation>比较两个字段所指的状态</translation>
    </message>
    <message>
        <source>Names that lead out of their folder or into a repository; they are only listed: %1</source>
        <translation>指向所在文件夹之外或某个仓库内部的名称，仅列出：%1</translation>
    </message>
    <message>
        <source>A merge has left files open (%1); of them our version is compared</source>
        <translation>合并留下了未解决的文件（%1 个）；比较的是我方版本</translation>
    </message>
    <message>
        <source>The program git is not on the search path, or cannot be started</source>
        <translation>搜索路径中没有 git 程序，或无法启动它</translation>
    </message>
    <message>
        <source>No Git repository holds this path: %1</source>
        <translation>没有 Git 仓库包含此路径：%1</translation>
    </message>
    <message>
        <source>Git refuses the repository, as it belongs to somebody else</source>
        <translation>Git 拒绝此仓库，因为它属于其他用户</translation>
    </message>
    <message>
        <source>The repository knows no branch, tag, commit or stash of this name: %1</source>
        <translation>仓库中没有此名称的分支、标签、提交或贮藏：%1</translation>
    </message>
    <message>
        <source>The repository has no work tree</source>
        <translation>仓库没有工作区</translation>
    </message>
    <message>
        <source>This state of the repository has no such folder: %1</source>
        <translation>仓库的此状态中没有这个文件夹：%1</translation>
    </message>
    <message>
        <source>Reading the repository...</source>
        <translation>正在读取仓库...</translation>
    </message>
    <message>
        <source>Reading the folder of the host...</source>
        <translation>正在读取主机上的文件夹...</translation>
    </message>
    <message>
        <source>Not listed, for line feeds in the name</source>
        <translation>名称中含有换行符，未列出</translation>
    </message>
    <message>
        <source>The host could not list everything</source>
        <translation>主机未能列出全部内容</translation>
    </message>
    <message>
        <source>A port is a number from 1 to 65535</source>
        <translation>端口是 1 到 65535 之间的数字</translation>
    </message>
    <message>
        <source>There is no such folder on the host</source>
        <translation>主机上没有这个文件夹</translation>
    </message>
    <message>
        <source>This is a file on the host, and no folder</source>
        <translation>这是主机上的一个文件，不是文件夹</translation>
    </message>
    <message>
        <source>You may not look into the folder on the host</source>
        <translation>您无权查看主机上的这个文件夹</translation>
    </message>
    <message>
        <source>The host does not list its files: it must have sh, find and stat</source>
        <translation>主机没有列出其文件：主机必须有 sh、find 和 stat</translation>
    </message>
    <message>
        <source>%1: no host is named</source>
        <translation>%1：没有指定主机</translation>
    </message>
    <message>
        <source>Reading the snapshot...</source>
        <translation>正在读取快照...</translation>
    </message>
    <message>
        <source>The snapshot has no checksums: size and time decide</source>
        <translation>快照没有校验和：以大小和时间判定</translation>
    </message>
    <message>
        <source>The snapshot has no checksums and the state of the repository no times: size decides</source>
        <translation>快照没有校验和，仓库状态没有文件时间：以大小判定</translation>
    </message>
    <message>
        <source>As folders</source>
        <translation>按文件夹比较</translation>
    </message>
    <message>
        <source>Compare the two states as folders: with filters, reports and copies of files</source>
        <translation>将两个状态作为文件夹比较：可使用过滤、报告和复制文件</translation>
    </message>
    <message>
        <source>The two sides have no commit in common</source>
        <translation>两侧没有共同的提交</translation>
    </message>
    <message>
        <source>There are more files, or is more content, than can be compared</source>
        <translation>文件或内容过多，无法比较</translation>
    </message>
    <message>
        <source>Git did not come to an end</source>
        <translation>Git 未能结束</translation>
    </message>
    <message>
        <source>Git failed</source>
        <translation>Git 失败</translation>
    </message>
    <message>
        <source>Archive compare(&amp;A)</source>
        <translation>压缩包比较(&amp;A)</translation>
    </message>
    <message>
        <source>Archive compare</source>
        <translation>压缩包比较</translation>
    </message>
    <message>
        <source>Archive compare %1</source>
        <translation>压缩包比较 %1</translation>
    </message>
    <message>
        <source>Compare the contents of two archives.</source>
        <translation>比较两个压缩包的内容。</translation>
    </message>
    <message>
        <source>Archive browse</source>
        <translation>压缩包浏览</translation>
    </message>
    <message>
        <source>Archive browse %1</source>
        <translation>压缩包浏览 %1</translation>
    </message>
    <message>
        <source>Browse: %1</source>
        <translation>浏览：%1</translation>
    </message>
    <message>
        <source>Look into an archive without unpacking it.</source>
        <translation>无需解压即可查看压缩包内容。</translation>
    </message>
    <message>
        <source>Checksum(&amp;K)</source>
        <translation>校验和(&amp;K)</translation>
    </message>
    <message>
        <source>Checksum</source>
        <translation>校验和</translation>
    </message>
    <message>
        <source>Checksum %1</source>
        <translation>校验和 %1</translation>
    </message>
    <message>
        <source>Left file:</source>
        <translation>左侧文件:</translation>
    </message>
    <message>
        <source>Right file:</source>
        <translation>右侧文件:</translation>
    </message>
    <message>
        <source>Drop or browse file…</source>
        <translation>拖入或浏览文件…</translation>
    </message>
    <message>
        <source>Optional: compare checksum…</source>
        <translation>可选：比较校验和…</translation>
    </message>
    <message>
        <source>Algorithm:</source>
        <translation>算法:</translation>
    </message>
    <message>
        <source>Compute/compare</source>
        <translation>计算/比较</translation>
    </message>
    <message>
        <source>Copy left</source>
        <translation>复制左侧</translation>
    </message>
    <message>
        <source>Copy right</source>
        <translation>复制右侧</translation>
    </message>
    <message>
        <source>Left : —</source>
        <translation>左侧 : —</translation>
    </message>
    <message>
        <source>Right: —</source>
        <translation>右侧: —</translation>
    </message>
    <message>
        <source>Left (%1): %2</source>
        <translation>左侧 (%1): %2</translation>
    </message>
    <message>
        <source>Right (%1): %2</source>
        <translation>右侧 (%1): %2</translation>
    </message>
    <message>
        <source>Left: error</source>
        <translation>左侧: 错误</translation>
    </message>
    <message>
        <source>Right: error</source>
        <translation>右侧: 错误</translation>
    </message>
    <message>
        <source>Checksums match</source>
        <translation>校验和一致</translation>
    </message>
    <message>
        <source>Checksums differ</source>
        <translation>校验和不同</translation>
    </message>
    <message>
        <source>Select at least one file</source>
        <translation>请至少选择一个文件</translation>
    </message>
    <message>
        <source>Computed %1</source>
        <translation>已计算 %1</translation>
    </message>
    <message>
        <source>Select file</source>
        <translation>选择文件</translation>
    </message>
    <message>
        <source>Choose a list of checksums as the left file</source>
        <translation>请选择一个校验和列表作为左侧文件</translation>
    </message>
    <message>
        <source>Choose a folder as the left file</source>
        <translation>请选择一个文件夹作为左侧文件</translation>
    </message>
    <message>
        <source>Check list</source>
        <translation>核对列表</translation>
    </message>
    <message>
        <source>Write list...</source>
        <translation>写入列表...</translation>
    </message>
    <message>
        <source>Compare the files that a list of checksums names: the list is the left file; its files lie beside it or in a folder above, or in the folder that is given as the right one</source>
        <translation>核对校验和列表所列的文件：列表为左侧文件；所列文件位于列表旁边或其上层文件夹中，或位于右侧给出的文件夹中</translation>
    </message>
    <message>
        <source>Write a list of the checksums of all files in the folder that is given as the left file</source>
        <translation>为左侧给出的文件夹中的所有文件写入校验和列表</translation>
    </message>
    <message>
        <source>This file is a list of checksums. Its files can be compared with it.</source>
        <translation>此文件是校验和列表，可以用它核对所列的文件。</translation>
    </message>
    <message>
        <source>This is a folder. A list of the checksums of all its files can be written.</source>
        <translation>这是一个文件夹，可以为其中所有文件写入校验和列表。</translation>
    </message>
    <message>
        <source>Larger than any list of checksums: %1</source>
        <translation>文件过大，不是校验和列表：%1</translation>
    </message>
    <message>
        <source>No checksums in: %1</source>
        <translation>其中没有校验和：%1</translation>
    </message>
    <message>
        <source>Not all files are what the list says.</source>
        <translation>有文件与列表不符。</translation>
    </message>
    <message>
        <source>All files are what the list says.</source>
        <translation>所有文件均与列表相符。</translation>
    </message>
    <message>
        <source>Lines that are no checksums: %1, the first is line %2</source>
        <translation>不是校验和的行：%1，第一处在第 %2 行</translation>
    </message>
    <message>
        <source>Files in: %1</source>
        <translation>文件位于：%1</translation>
    </message>
    <message>
        <source>Write a list of checksums</source>
        <translation>写入校验和列表</translation>
    </message>
    <message>
        <source>Lists of checksums (%1)</source>
        <translation>校验和列表 (%1)</translation>
    </message>
    <message>
        <source>No list was written</source>
        <translation>未写入列表</translation>
    </message>
    <message>
        <source>Cannot read: %1</source>
        <translation>无法读取：%1</translation>
    </message>
    <message>
        <source>Differs</source>
        <translation>不符</translation>
    </message>
    <message>
        <source>Matches</source>
        <translation>相符</translation>
    </message>
    <message>
        <source>Outside the folder</source>
        <translation>超出文件夹</translation>
    </message>
    <message>
        <source>Not listed</source>
        <translation>未列出</translation>
    </message>
    <message>
        <source>Listed</source>
        <translation>列表中</translation>
    </message>
    <message>
        <source>Found</source>
        <translation>实际</translation>
    </message>
    <message>
        <source>Unreadable</source>
        <translation>无法读取</translation>
    </message>
    <message>
        <source>All Files (*)</source>
        <translation>所有文件 (*)</translation>
    </message>
    <message>
        <source>Cannot read to the end: %1</source>
        <translation>无法读到末尾：%1</translation>
    </message>
    <message>
        <source>There is no such file</source>
        <translation>没有这样的文件</translation>
    </message>
    <message>
        <source>There is no such file, and it is no checksum either</source>
        <translation>没有这样的文件，它也不是校验和</translation>
    </message>
    <message>
        <source>Reading %1</source>
        <translation>正在读取 %1</translation>
    </message>
    <message>
        <source>Load and compare the two images</source>
        <translation>载入并比较两幅图像</translation>
    </message>
    <message>
        <source>Zoom in</source>
        <translation>放大</translation>
    </message>
    <message>
        <source>Zoom out</source>
        <translation>缩小</translation>
    </message>
    <message>
        <source>Fit</source>
        <translation>适应</translation>
    </message>
    <message>
        <source>Original size</source>
        <translation>原始大小</translation>
    </message>
    <message>
        <source>Exchange left and right</source>
        <translation>交换左右两侧</translation>
    </message>
    <message>
        <source>What the files say beside the pixels</source>
        <translation>文件中除像素以外的信息</translation>
    </message>
    <message>
        <source>Export report</source>
        <translation>导出报告</translation>
    </message>
    <message>
        <source>Write the result as an HTML page</source>
        <translation>将结果写入 HTML 页面</translation>
    </message>
    <message>
        <source>Next view</source>
        <translation>下一种视图</translation>
    </message>
    <message>
        <source>Which frame of the animations or page of the files is compared</source>
        <translation>比较动画的第几帧或文件的第几页</translation>
    </message>
    <message>
        <source>Frame:</source>
        <translation>帧:</translation>
    </message>
    <message>
        <source>Pixel detail</source>
        <translation>像素详情</translation>
    </message>
    <message>
        <source>Ignore smoothed edges</source>
        <translation>忽略平滑边缘</translation>
    </message>
    <message>
        <source>How far red, green and blue may deviate without being a difference</source>
        <translation>红、绿、蓝偏差多少以内不算差异</translation>
    </message>
    <message>
        <source>Pixels that look like the smoothed edge of a shape are shown in yellow and are no differences</source>
        <translation>看起来像图形平滑边缘的像素以黄色显示，不算差异</translation>
    </message>
    <message>
        <source>Tolerance:</source>
        <translation>容差：</translation>
    </message>
    <message>
        <source>Tolerance: %1</source>
        <translation>容差：%1</translation>
    </message>
    <message>
        <source>Fixed 16×16 px per grid cell</source>
        <translation>固定每格 16×16 像素</translation>
    </message>
    <message>
        <source>Fit pixel grid to panel</source>
        <translation>使像素网格适应面板</translation>
    </message>
    <message>
        <source>X:  Y:   RGB:  A:</source>
        <translation>X:  Y:   RGB:  A:</translation>
    </message>
    <message>
        <source>X:%1 Y:%2  RGB:%3,%4,%5  A:%6</source>
        <translation>X:%1 Y:%2  RGB:%3,%4,%5  A:%6</translation>
    </message>
    <message>
        <source>%1 (not hovering)</source>
        <translation>%1（未悬停）</translation>
    </message>
    <message>
        <source>%1  offset (%2, %3)</source>
        <translation>%1  偏移 (%2, %3)</translation>
    </message>
    <message>
        <source>Left original</source>
        <translation>左侧原图</translation>
    </message>
    <message>
        <source>Right original</source>
        <translation>右侧原图</translation>
    </message>
    <message>
        <source>Diff map</source>
        <translation>差异图</translation>
    </message>
    <message>
        <source>Blink</source>
        <translation>闪烁</translation>
    </message>
    <message>
        <source>Swipe</source>
        <translation>滑动</translation>
    </message>
    <message>
        <source>Overlay</source>
        <translation>叠加</translation>
    </message>
    <message>
        <source>How both images are shown in one place (Ctrl+B)</source>
        <translation>两幅图像在同一处如何显示 (Ctrl+B)</translation>
    </message>
    <message>
        <source>From the left image to the right one</source>
        <translation>从左侧图像到右侧图像</translation>
    </message>
    <message>
        <source>Diff map (red = different)</source>
        <translation>差异图（红色 = 不同）</translation>
    </message>
    <message>
        <source>Both images in one place</source>
        <translation>两幅图像显示在同一处</translation>
    </message>
    <message>
        <source>Left image path...</source>
        <translation>左侧图像路径...</translation>
    </message>
    <message>
        <source>Right image path...</source>
        <translation>右侧图像路径...</translation>
    </message>
    <message>
        <source>Select left image</source>
        <translation>选择左侧图像</translation>
    </message>
    <message>
        <source>Select right image</source>
        <translation>选择右侧图像</translation>
    </message>
    <message>
        <source>Images (*.png *.jpg *.jpeg *.bmp *.gif *.tiff *.webp);;All Files (*)</source>
        <translation>图像 (*.png *.jpg *.jpeg *.bmp *.gif *.tiff *.webp);;所有文件 (*)</translation>
    </message>
    <message>
        <source>Cannot load image</source>
        <translation>无法加载图像</translation>
    </message>
    <message>
        <source>(not loaded)</source>
        <translation>(未加载)</translation>
    </message>
    <message>
        <source>Same size (tolerance %1)</source>
        <translation>尺寸相同（容差 %1）</translation>
    </message>
    <message>
        <source>Other differences...</source>
        <translation>其他差异...</translation>
    </message>
    <message>
        <source>Difference %1 of %2: %3 × %4 pixels at (%5, %6)</source>
        <translation>第 %1 处差异，共 %2 处：%3 × %4 像素，位于 (%5, %6)</translation>
    </message>
    <message>
        <source>HTML pages (*.html)</source>
        <translation>HTML 页面 (*.html)</translation>
    </message>
    <message>
        <source>Image comparison</source>
        <translation>图像比较</translation>
    </message>
    <message>
        <source>Property</source>
        <translation>属性</translation>
    </message>
    <message>
        <source>Differing regions: %1</source>
        <translation>差异区域：%1</translation>
    </message>
    <message>
        <source>Width</source>
        <translation>宽度</translation>
    </message>
    <message>
        <source>Height</source>
        <translation>高度</translation>
    </message>
    <message>
        <source>The first %1 are listed.</source>
        <translation>仅列出前 %1 个。</translation>
    </message>
    <message>
        <source>Made smaller: %1 × %2 instead of %3 × %4 pixels.</source>
        <translation>已缩小：%1 × %2，原为 %3 × %4 像素。</translation>
    </message>
    <message>
        <source>Image properties</source>
        <translation>图像属性</translation>
    </message>
    <message>
        <source>as stored</source>
        <translation>按存储方向</translation>
    </message>
    <message>
        <source>mirrored</source>
        <translation>左右翻转</translation>
    </message>
    <message>
        <source>upside down and mirrored</source>
        <translation>上下翻转</translation>
    </message>
    <message>
        <source>turned by 180°</source>
        <translation>旋转 180°</translation>
    </message>
    <message>
        <source>turned by 90°</source>
        <translation>旋转 90°</translation>
    </message>
    <message>
        <source>mirrored and turned by 90°</source>
        <translation>左右翻转并旋转 90°</translation>
    </message>
    <message>
        <source>mirrored and turned by 270°</source>
        <translation>左右翻转并旋转 270°</translation>
    </message>
    <message>
        <source>turned by 270°</source>
        <translation>旋转 270°</translation>
    </message>
    <message>
        <source>Size in pixels</source>
        <translation>像素尺寸</translation>
    </message>
    <message>
        <source>File size</source>
        <translation>文件大小</translation>
    </message>
    <message>
        <source>Bits per pixel</source>
        <translation>每像素位数</translation>
    </message>
    <message>
        <source>Colour table</source>
        <translation>颜色表</translation>
    </message>
    <message>
        <source>Transparency</source>
        <translation>透明度</translation>
    </message>
    <message>
        <source>yes</source>
        <translation>是</translation>
    </message>
    <message>
        <source>no</source>
        <translation>否</translation>
    </message>
    <message>
        <source>Orientation</source>
        <translation>方向</translation>
    </message>
    <message>
        <source>Colour profile</source>
        <translation>颜色配置</translation>
    </message>
    <message>
        <source>Resolution</source>
        <translation>分辨率</translation>
    </message>
    <message>
        <source>%1 dpi</source>
        <translation>%1 dpi</translation>
    </message>
    <message>
        <source>Frames</source>
        <translation>帧数</translation>
    </message>
    <message>
        <source>Text: %1</source>
        <translation>文本：%1</translation>
    </message>
    <message>
        <source>No picture, or of an unknown format: %1</source>
        <translation>不是图像，或格式未知：%1</translation>
    </message>
    <message>
        <source>Damaged or cut off (%1): %2</source>
        <translation>已损坏或不完整（%1）：%2</translation>
    </message>
    <message>
        <source>Too large for the memory of this computer (%1 × %2 pixels): %3</source>
        <translation>图像过大，本机内存不足（%1 × %2 像素）：%3</translation>
    </message>
    <message>
        <source>The files are identical.</source>
        <translation>两个文件完全相同。</translation>
    </message>
    <message>
        <source>All pixels are identical; the files differ in other bytes.</source>
        <translation>所有像素相同；文件的其他字节不同。</translation>
    </message>
    <message>
        <source>All pixels of this frame are identical; the files differ.</source>
        <translation>这一帧的所有像素都相同；文件有差异。</translation>
    </message>
    <message>
        <source>No pixel differs by more than the tolerance.</source>
        <translation>没有像素的差异超过容差。</translation>
    </message>
    <message>
        <source>%1 pixels differ (%2 %) in %3 regions.</source>
        <translation>%1 个像素不同（%2 %），分布在 %3 个区域。</translation>
    </message>
    <message>
        <source>%1 pixels differ (%2 %) in one region.</source>
        <translation>%1 个像素不同（%2 %），分布在一个区域。</translation>
    </message>
    <message>
        <source>less than %1</source>
        <translation>小于 %1</translation>
    </message>
    <message>
        <source>Largest deviation: %1.</source>
        <translation>最大偏差：%1。</translation>
    </message>
    <message>
        <source>Smoothed edges left out: %1.</source>
        <translation>已忽略的平滑边缘：%1。</translation>
    </message>
    <message>
        <source>Cut off, so that its last pixels are missing: %1</source>
        <translation>文件不完整，缺少末尾的像素：%1</translation>
    </message>
    <message>
        <source>Compute the checksums of a file and match them with an expected value.</source>
        <translation>计算文件的校验和，并与预期值核对。</translation>
    </message>
    <message>
        <source>Duplicate finder(&amp;D)</source>
        <translation>重复文件查找(&amp;D)</translation>
    </message>
    <message>
        <source>Duplicates</source>
        <translation>重复文件</translation>
    </message>
    <message>
        <source>Duplicate finder %1</source>
        <translation>重复文件查找 %1</translation>
    </message>
    <message>
        <source>Duplicates: %1</source>
        <translation>重复文件：%1</translation>
    </message>
    <message>
        <source>Scan duplicates</source>
        <translation>扫描重复文件</translation>
    </message>
    <message>
        <source>Look for files of the same contents</source>
        <translation>查找内容相同的文件</translation>
    </message>
    <message>
        <source>Add a folder…</source>
        <translation>添加文件夹…</translation>
    </message>
    <message>
        <source>Look in another folder, too</source>
        <translation>同时在另一个文件夹中查找</translation>
    </message>
    <message>
        <source>Previous group</source>
        <translation>上一组</translation>
    </message>
    <message>
        <source>Next group</source>
        <translation>下一组</translation>
    </message>
    <message>
        <source>Delete extra copies…</source>
        <translation>删除多余副本…</translation>
    </message>
    <message>
        <source>Choose copies that are to be deleted</source>
        <translation>选择要删除的副本</translation>
    </message>
    <message>
        <source>Bring back what this tab has deleted last</source>
        <translation>恢复此标签页上次删除的文件</translation>
    </message>
    <message>
        <source>Open the file</source>
        <translation>打开文件</translation>
    </message>
    <message>
        <source>Compare two</source>
        <translation>比较两项</translation>
    </message>
    <message>
        <source>Compare the two selected files or folders, or the selected one with the first of its group</source>
        <translation>比较选中的两个文件或文件夹，或将选中项与所在组的第一项比较</translation>
    </message>
    <message>
        <source>Export…</source>
        <translation>导出…</translation>
    </message>
    <message>
        <source>Save all groups as CSV or JSON</source>
        <translation>将所有组保存为 CSV 或 JSON</translation>
    </message>
    <message>
        <source>Check or uncheck</source>
        <translation>勾选或取消勾选</translation>
    </message>
    <message>
        <source>Check all copies in this folder</source>
        <translation>勾选此文件夹中的所有副本</translation>
    </message>
    <message>
        <source>Uncheck all copies in this folder</source>
        <translation>取消勾选此文件夹中的所有副本</translation>
    </message>
    <message>
        <source>  Folder: </source>
        <translation>  文件夹： </translation>
    </message>
    <message>
        <source>Folder to scan…</source>
        <translation>要扫描的文件夹…</translation>
    </message>
    <message>
        <source>Select folder</source>
        <translation>选择文件夹</translation>
    </message>
    <message>
        <source>Show the groups whose paths hold these words</source>
        <translation>显示路径中含有这些词的组</translation>
    </message>
    <message>
        <source>Other names of the same files: %1</source>
        <translation>同一文件的其他名称：%1</translation>
    </message>
    <message>
        <source>Hard links and links: names that lead to files which are counted once</source>
        <translation>硬链接和链接：指向同一文件的名称，该文件只计一次</translation>
    </message>
    <message>
        <source>What is there more than once?</source>
        <translation>哪些文件不止一份？</translation>
    </message>
    <message>
        <source>Drop a folder here or enter its path above, then press Scan duplicates (F5). Files of the same contents are shown in groups; nothing is deleted before you say so.</source>
        <translation>将文件夹拖到此处或在上方输入其路径，然后按“扫描重复文件”（F5）。内容相同的文件按组显示；未经您确认不会删除任何文件。</translation>
    </message>
    <message>
        <source>No group has a path with these words.</source>
        <translation>没有任何组的路径含有这些词。</translation>
    </message>
    <message>
        <source>There are no duplicates.</source>
        <translation>没有重复文件。</translation>
    </message>
    <message>
        <source>Cannot open %1</source>
        <translation>无法打开 %1</translation>
    </message>
    <message>
        <source>Select a valid folder</source>
        <translation>请选择有效的文件夹</translation>
    </message>
    <message>
        <source>There is no folder %1</source>
        <translation>文件夹 %1 不存在</translation>
    </message>
    <message>
        <source>Scanning…</source>
        <translation>正在扫描…</translation>
    </message>
    <message>
        <source>Cancelled. Scanned %1 files, found %2 duplicate groups.</source>
        <translation>已取消。已扫描 %1 个文件，找到 %2 个重复组。</translation>
    </message>
    <message>
        <source>%1 files, %2 duplicate groups (%3 files involved)</source>
        <translation>%1 个文件，%2 个重复组（涉及 %3 个文件）</translation>
    </message>
    <message>
        <source>%1 lies in another of the folders and is scanned once</source>
        <translation>%1 位于另一个文件夹之内，只扫描一次</translation>
    </message>
    <message>
        <source>Keep the copies in these folders</source>
        <translation>保留这些文件夹中的副本</translation>
    </message>
    <message>
        <source>What lies in one of these folders or below stays, and the other copies of its group are checked. Groups with no copy there are left as they are.</source>
        <translation>位于这些文件夹或其子文件夹中的副本会保留，同组的其他副本会被勾选。在其中没有副本的组保持不变。</translation>
    </message>
    <message>
        <source>Keep at least one unchecked copy per group.</source>
        <translation>每组至少保留一个未勾选的副本。</translation>
    </message>
    <message>
        <source>Confirm delete</source>
        <translation>确认删除</translation>
    </message>
    <message>
        <source>Permanently delete %1 file(s)?</source>
        <translation>永久删除 %1 个文件？</translation>
    </message>
    <message>
        <source>Hidden by the filter among them: %1</source>
        <translation>其中被筛选隐藏的：%1</translation>
    </message>
    <message>
        <source>Deleting…</source>
        <translation>正在删除…</translation>
    </message>
    <message>
        <source>Deleted %1</source>
        <translation>已删除 %1</translation>
    </message>
    <message>
        <source>Not deleted: %1 (%2)</source>
        <translation>未删除：%1（%2）</translation>
    </message>
    <message>
        <source>Delete done: %1 ok, %2 failed</source>
        <translation>删除完成：成功 %1 个，失败 %2 个</translation>
    </message>
    <message>
        <source>Files are being deleted. Stop after the current one and close?</source>
        <translation>正在删除文件。要在当前文件之后停止并关闭吗？</translation>
    </message>
    <message>
        <source>CSV (*.csv);;JSON (*.json)</source>
        <translation>CSV (*.csv);;JSON (*.json)</translation>
    </message>
    <message>
        <source>File/group</source>
        <translation>文件/组</translation>
    </message>
    <message>
        <source>MD5 hash</source>
        <translation>MD5 哈希</translation>
    </message>
    <message>
        <source>Same folder (%1 copies, %2 file(s) each)</source>
        <translation>相同的文件夹（%1 份，各含 %2 个文件）</translation>
    </message>
    <message>
        <source>Duplicate group (%1 copies)</source>
        <translation>重复组（%1 份）</translation>
    </message>
    <message>
        <source>%1 – none would stay</source>
        <translation>%1 – 一份也不会保留</translation>
    </message>
    <message>
        <source>One file with %1 names, no copies</source>
        <translation>有 %1 个名称的同一文件，没有副本</translation>
    </message>
    <message>
        <source>%1 (reference)</source>
        <translation>%1（参照）</translation>
    </message>
    <message>
        <source>%1 (link to elsewhere)</source>
        <translation>%1（指向别处的链接）</translation>
    </message>
    <message>
        <source>%1 (+%2 names)</source>
        <translation>%1（另有 %2 个名称）</translation>
    </message>
    <message>
        <source>The same file under other names:</source>
        <translation>同一文件的其他名称：</translation>
    </message>
    <message>
        <source>It lies in a reference folder and is not deleted.</source>
        <translation>位于参照文件夹中，不会被删除。</translation>
    </message>
    <message>
        <source>Look for copies</source>
        <translation>查找副本</translation>
    </message>
    <message>
        <source>Only as reference</source>
        <translation>仅作参照</translation>
    </message>
    <message>
        <source>Copies in this folder may be deleted</source>
        <translation>此文件夹中的副本可以删除</translation>
    </message>
    <message>
        <source>Nothing in this folder is deleted</source>
        <translation>不删除此文件夹中的任何文件</translation>
    </message>
    <message>
        <source>Do not look in this folder</source>
        <translation>不在此文件夹中查找</translation>
    </message>
    <message>
        <source>Check copies to delete (keep one per group).</source>
        <translation>勾选要删除的副本（每组保留一份）。</translation>
    </message>
    <message>
        <source>Check by rule</source>
        <translation>按规则勾选</translation>
    </message>
    <message>
        <source>Check the other copies of every group that is shown</source>
        <translation>勾选所显示的每一组中的其余副本</translation>
    </message>
    <message>
        <source>Keep the newest</source>
        <translation>保留最新的</translation>
    </message>
    <message>
        <source>Keep the oldest</source>
        <translation>保留最旧的</translation>
    </message>
    <message>
        <source>Keep the shortest path</source>
        <translation>保留路径最短的</translation>
    </message>
    <message>
        <source>Keep those in folders…</source>
        <translation>保留某些文件夹中的…</translation>
    </message>
    <message>
        <source>Uncheck all</source>
        <translation>全部取消勾选</translation>
    </message>
    <message>
        <source>%1 to delete (%2), %3 of the same groups stay</source>
        <translation>将删除 %1 个（%2），同组中保留 %3 个</translation>
    </message>
    <message>
        <source>Nothing is checked</source>
        <translation>尚未勾选</translation>
    </message>
    <message>
        <source>Find the files of a folder tree that are there more than once.</source>
        <translation>查找文件夹树中重复出现的文件。</translation>
    </message>
    <message>
        <source>Folder snapshot(&amp;N)</source>
        <translation>文件夹快照(&amp;N)</translation>
    </message>
    <message>
        <source>Snapshot</source>
        <translation>快照</translation>
    </message>
    <message>
        <source>Folder snapshot %1</source>
        <translation>文件夹快照 %1</translation>
    </message>
    <message>
        <source>Record the state of a folder and see later what has changed.</source>
        <translation>记录文件夹的状态，以便日后查看变化。</translation>
    </message>
    <message>
        <source>Environment compare(&amp;E)</source>
        <translation>环境变量比较(&amp;E)</translation>
    </message>
    <message>
        <source>Environment</source>
        <translation>环境变量</translation>
    </message>
    <message>
        <source>Environment compare %1</source>
        <translation>环境变量比较 %1</translation>
    </message>
    <message>
        <source>Record the environment variables and compare them with a record.</source>
        <translation>记录环境变量，并与以往的记录比较。</translation>
    </message>
    <message>
        <source>Disk usage(&amp;U)</source>
        <translation>磁盘占用(&amp;U)</translation>
    </message>
    <message>
        <source>Disk usage</source>
        <translation>磁盘占用</translation>
    </message>
    <message>
        <source>Disk usage %1</source>
        <translation>磁盘占用 %1</translation>
    </message>
    <message>
        <source>Disk usage: %1</source>
        <translation>磁盘占用：%1</translation>
    </message>
    <message>
        <source>Folder:</source>
        <translation>文件夹：</translation>
    </message>
    <message>
        <source>Choose or drop a folder…</source>
        <translation>选择或拖放一个文件夹…</translation>
    </message>
    <message>
        <source>Max depth:</source>
        <translation>最大深度：</translation>
    </message>
    <message>
        <source>No limit</source>
        <translation>不限</translation>
    </message>
    <message>
        <source>How many levels of folders are entered; what lies deeper does not count</source>
        <translation>进入多少层文件夹；更深处的内容不计入</translation>
    </message>
    <message>
        <source>Show files</source>
        <translation>显示文件</translation>
    </message>
    <message>
        <source>List files too, not only folders</source>
        <translation>除文件夹外也列出文件</translation>
    </message>
    <message>
        <source>Hidden files</source>
        <translation>隐藏文件</translation>
    </message>
    <message>
        <source>Count hidden files and folders too</source>
        <translation>隐藏的文件和文件夹也计入</translation>
    </message>
    <message>
        <source>Colours by kind of file</source>
        <translation>按文件类型着色</translation>
    </message>
    <message>
        <source>Colours by growth</source>
        <translation>按增长着色</translation>
    </message>
    <message>
        <source>Growth is that since the scan before of the same folder in this tab, or since a snapshot</source>
        <translation>增长是指与本标签页中上一次扫描同一文件夹相比，或与一个快照相比</translation>
    </message>
    <message>
        <source>Scan</source>
        <translation>扫描</translation>
    </message>
    <message>
        <source>Measure the folder (F5)</source>
        <translation>统计该文件夹（F5）</translation>
    </message>
    <message>
        <source>Export CSV</source>
        <translation>导出 CSV</translation>
    </message>
    <message>
        <source>Write the tree to a file</source>
        <translation>将树写入文件</translation>
    </message>
    <message>
        <source>CSV (*.csv)</source>
        <translation>CSV (*.csv)</translation>
    </message>
    <message>
        <source>Exported: %1</source>
        <translation>已导出：%1</translation>
    </message>
    <message>
        <source>Where did the space go?</source>
        <translation>空间用到哪里去了？</translation>
    </message>
    <message>
        <source>Choose a folder or drop one here, and scan it.</source>
        <translation>选择一个文件夹或将其拖放到这里，然后扫描。</translation>
    </message>
    <message>
        <source>Enter a valid folder path</source>
        <translation>请输入有效的文件夹路径</translation>
    </message>
    <message>
        <source>Scan cancelled (%1 ms)</source>
        <translation>扫描已取消（%1 毫秒）</translation>
    </message>
    <message>
        <source>Done — %1 total, %2 files, %3 subfolders, %4 ms</source>
        <translation>完成 — 共 %1，%2 个文件，%3 个子文件夹，%4 毫秒</translation>
    </message>
    <message>
        <source>Disk: %1</source>
        <translation>磁盘：%1</translation>
    </message>
    <message>
        <source>What the files take on the disk; a file with several names counts once</source>
        <translation>文件在磁盘上占用的空间；有多个名称的文件只计一次</translation>
    </message>
    <message>
        <source>Folders not read: %1</source>
        <translation>未读取的文件夹：%1</translation>
    </message>
    <message>
        <source>Hard links counted once: %1</source>
        <translation>只计一次的硬链接：%1</translation>
    </message>
    <message>
        <source>Links not followed: %1</source>
        <translation>未跟随的链接：%1</translation>
    </message>
    <message>
        <source>Share %</source>
        <translation>占比 %</translation>
    </message>
    <message>
        <source>Files</source>
        <translation>文件数</translation>
    </message>
    <message>
        <source>Subfolders</source>
        <translation>子文件夹数</translation>
    </message>
    <message>
        <source>On disk</source>
        <translation>磁盘占用</translation>
    </message>
    <message>
        <source>Growth</source>
        <translation>增长</translation>
    </message>
    <message>
        <source>Growth: %1</source>
        <translation>增长：%1</translation>
    </message>
    <message>
        <source>Growth since…</source>
        <translation>对比快照…</translation>
    </message>
    <message>
        <source>Compare with a folder snapshot: what has grown since it was made</source>
        <translation>与文件夹快照比较：自创建快照以来增长的内容</translation>
    </message>
    <message>
        <source>Growth since a snapshot</source>
        <translation>自快照以来的增长</translation>
    </message>
    <message>
        <source>Growth since %1</source>
        <translation>自 %1 以来的增长</translation>
    </message>
    <message>
        <source>Neither a snapshot nor a measurement of a folder: %1</source>
        <translation>既不是文件夹快照，也不是文件夹的测量结果：%1</translation>
    </message>
    <message>
        <source>Levels, files and hidden files have to be chosen as in this file (a snapshot has all levels and files, none hidden): %1</source>
        <translation>层级、文件和隐藏文件的选择必须与此文件一致（快照包含所有层级和文件，不含隐藏文件）：%1</translation>
    </message>
    <message>
        <source>This file has several names; its room on the disk counts at another one</source>
        <translation>此文件有多个名称；其磁盘占用计在另一个名称下</translation>
    </message>
    <message>
        <source>%1, %2 %</source>
        <translation>%1，%2 %</translation>
    </message>
    <message>
        <source>Words in names</source>
        <translation>名称中的词</translation>
    </message>
    <message>
        <source>Shows the files and folders whose names hold all of these words</source>
        <translation>显示名称中包含所有这些词的文件和文件夹</translation>
    </message>
    <message>
        <source>Files and folders by size</source>
        <translation>按大小排列的文件和文件夹</translation>
    </message>
    <message>
        <source>Map</source>
        <translation>分布图</translation>
    </message>
    <message>
        <source>Map of the space</source>
        <translation>空间分布图</translation>
    </message>
    <message>
        <source>Largest files</source>
        <translation>最大的文件</translation>
    </message>
    <message>
        <source>Pictures</source>
        <translation>图片</translation>
    </message>
    <message>
        <source>Sound</source>
        <translation>声音</translation>
    </message>
    <message>
        <source>Films</source>
        <translation>视频</translation>
    </message>
    <message>
        <source>Documents</source>
        <translation>文档</translation>
    </message>
    <message>
        <source>Archives</source>
        <translation>压缩包</translation>
    </message>
    <message>
        <source>Programs</source>
        <translation>程序</translation>
    </message>
    <message>
        <source>Source code</source>
        <translation>源代码</translation>
    </message>
    <message>
        <source>Other</source>
        <translation>其他</translation>
    </message>
    <message>
        <source>Grown</source>
        <translation>增大</translation>
    </message>
    <message>
        <source>As before</source>
        <translation>未变</translation>
    </message>
    <message>
        <source>Shrunk</source>
        <translation>减小</translation>
    </message>
    <message>
        <source>Show alone in the map</source>
        <translation>在分布图中单独显示</translation>
    </message>
    <message>
        <source>Show the whole in the map</source>
        <translation>在分布图中显示全部</translation>
    </message>
    <message>
        <source>There is no file manager to be had</source>
        <translation>没有可用的文件管理器</translation>
    </message>
    <message>
        <source>Delete to the recycle bin…</source>
        <translation>删除到回收站…</translation>
    </message>
    <message>
        <source>Select files or folders below the scanned folder</source>
        <translation>请选择所扫描文件夹之下的文件或文件夹</translation>
    </message>
    <message>
        <source>There is nothing to be deleted</source>
        <translation>没有可删除的内容</translation>
    </message>
    <message>
        <source>Move these files and folders to the recycle bin?</source>
        <translation>将这些文件和文件夹移到回收站吗？</translation>
    </message>
    <message>
        <source>Deleted from %1</source>
        <translation>从 %1 删除</translation>
    </message>
    <message>
        <source>Deleted: %1</source>
        <translation>已删除：%1</translation>
    </message>
    <message>
        <source>Could not be deleted: %1</source>
        <translation>无法删除：%1</translation>
    </message>
    <message>
        <source>There is no recycle bin here, so nothing was deleted</source>
        <translation>此处没有回收站，因此没有删除任何内容</translation>
    </message>
    <message>
        <source>Files are still being deleted. Cancel that first.</source>
        <translation>仍在删除文件。请先取消。</translation>
    </message>
    <message>
        <source>See which files and folders take up the space of a folder tree.</source>
        <translation>查看文件夹树中哪些文件和文件夹占用了空间。</translation>
    </message>
    <message>
        <source>Services snapshot(&amp;S)</source>
        <translation>服务快照(&amp;S)</translation>
    </message>
    <message>
        <source>Services</source>
        <translation>服务</translation>
    </message>
    <message>
        <source>Services snapshot %1</source>
        <translation>服务快照 %1</translation>
    </message>
    <message>
        <source>Record the system&apos;s services and compare them with a record.</source>
        <translation>记录系统服务，并与以往的记录比较。</translation>
    </message>
    <message>
        <source>Startup items(&amp;T)</source>
        <translation>启动项(&amp;T)</translation>
    </message>
    <message>
        <source>Startup</source>
        <translation>启动项</translation>
    </message>
    <message>
        <source>Startup items %1</source>
        <translation>启动项 %1</translation>
    </message>
    <message>
        <source>Record what starts with the system and compare it with a record.</source>
        <translation>记录随系统启动的项目，并与以往的记录比较。</translation>
    </message>
    <message>
        <source>SFTP/SSH folder compare(&amp;H)</source>
        <translation>SFTP/SSH 文件夹比较(&amp;H)</translation>
    </message>
    <message>
        <source>SFTP compare</source>
        <translation>SFTP 比较</translation>
    </message>
    <message>
        <source>SFTP compare %1</source>
        <translation>SFTP 比较 %1</translation>
    </message>
    <message>
        <source>Compare a local folder with one on a remote host over SSH.</source>
        <translation>通过 SSH 比较本地文件夹与远程主机上的文件夹。</translation>
    </message>
    <message>
        <source>%1 &lt;-&gt; %2</source>
        <translation>%1 &lt;-&gt; %2</translation>
    </message>
    <message>
        <source>&amp;Yes</source>
        <translation>是(&amp;Y)</translation>
    </message>
    <message>
        <source>&amp;No</source>
        <translation>否(&amp;N)</translation>
    </message>
    <message>
        <source>Strict (all significant)</source>
        <translation>严格（所有差异均重要）</translation>
    </message>
    <message>
        <source>Ignore whitespace</source>
        <translation>忽略空白</translation>
    </message>
    <message>
        <source>Ignore case</source>
        <translation>忽略大小写</translation>
    </message>
    <message>
        <source>Relaxed (ws, case, EOL, blank lines)</source>
        <translation>宽松（空白、大小写、行尾、空行）</translation>
    </message>
    <message>
        <source>identical</source>
        <translation>相同</translation>
    </message>
    <message>
        <source>added</source>
        <translation>新增</translation>
    </message>
    <message>
        <source>removed</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>modified</source>
        <translation>修改</translation>
    </message>
    <message>
        <source>Left text</source>
        <translation>左侧文本</translation>
    </message>
    <message>
        <source>Right text</source>
        <translation>右侧文本</translation>
    </message>
    <message>
        <source>No line here, %1</source>
        <translation>此处无行，%1</translation>
    </message>
    <message>
        <source>Line %1, %2: %3</source>
        <translation>第 %1 行，%2：%3</translation>
    </message>
    <message>
        <source>Line %1: %2</source>
        <translation>第 %1 行：%2</translation>
    </message>
    <message>
        <source>Overview of all differences; press or drag to go there</source>
        <translation>所有差异的概览；按下或拖动可跳转</translation>
    </message>
    <message>
        <source>Overview of differences</source>
        <translation>差异概览</translation>
    </message>
    <message>
        <source>Velmora</source>
        <translation>Velmora</translation>
    </message>
    <message>
        <source>Drag folders or files onto a session icon, or click a session icon to begin:</source>
        <translation>将文件夹或文件拖到会话图标上，或单击会话图标开始：</translation>
    </message>
    <message>
        <source>&lt;h2&gt;Velmora&lt;/h2&gt;&lt;p&gt;File and folder comparison for Windows.&lt;/p&gt;&lt;ul&gt;&lt;li&gt;Text compare with syntax highlighting&lt;/li&gt;&lt;li&gt;Folder structure and content compare&lt;/li&gt;&lt;li&gt;Binary hex compare&lt;/li&gt;&lt;li&gt;Table (CSV/TSV) compare&lt;/li&gt;&lt;li&gt;Image compare&lt;/li&gt;&lt;li&gt;Folder sync and three-way merge&lt;/li&gt;&lt;li&gt;Git, archives, SFTP/SSH&lt;/li&gt;&lt;li&gt;Registry, version info, checksums&lt;/li&gt;&lt;li&gt;Duplicates, snapshots, disk usage&lt;/li&gt;&lt;li&gt;Environment, services, startup items&lt;/li&gt;&lt;/ul&gt;</source>
        <translation>&lt;h2&gt;Velmora&lt;/h2&gt;&lt;p&gt;适用于 Windows 的文件与文件夹比较工具。&lt;/p&gt;&lt;ul&gt;&lt;li&gt;带语法高亮的文本比较&lt;/li&gt;&lt;li&gt;文件夹结构与内容比较&lt;/li&gt;&lt;li&gt;二进制十六进制比较&lt;/li&gt;&lt;li&gt;表格 (CSV/TSV) 比较&lt;/li&gt;&lt;li&gt;图像比较&lt;/li&gt;&lt;li&gt;文件夹同步与三方合并&lt;/li&gt;&lt;li&gt;Git、压缩包、SFTP/SSH&lt;/li&gt;&lt;li&gt;注册表、版本信息、校验和&lt;/li&gt;&lt;li&gt;重复文件、快照、磁盘占用&lt;/li&gt;&lt;li&gt;环境变量、服务、启动项&lt;/li&gt;&lt;/ul&gt;</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>版本</translation>
    </message>
    <message>
        <source>File versions</source>
        <translation>文件版本</translation>
    </message>
    <message>
        <source>Show what version each program and library says it is</source>
        <translation>显示各程序和库自述的版本</translation>
    </message>
    <message>
        <source>build %1</source>
        <translation>构建于 %1</translation>
    </message>
    <message>
        <source>About Velmora</source>
        <translation>关于 Velmora</translation>
    </message>
    <message>
        <source>Enable editing</source>
        <translation>启用编辑</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>撤销</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>重做</translation>
    </message>
    <message>
        <source>Undo left</source>
        <translation>撤销左侧</translation>
    </message>
    <message>
        <source>Redo left</source>
        <translation>重做左侧</translation>
    </message>
    <message>
        <source>Undo right</source>
        <translation>撤销右侧</translation>
    </message>
    <message>
        <source>Redo right</source>
        <translation>重做右侧</translation>
    </message>
    <message>
        <source>Session(&amp;S)</source>
        <translation>会话(&amp;S)</translation>
    </message>
    <message>
        <source>New session(&amp;N)</source>
        <translation>新建会话(&amp;N)</translation>
    </message>
    <message>
        <source>New tab(&amp;I)</source>
        <translation>新建标签页(&amp;I)</translation>
    </message>
    <message>
        <source>Close tab</source>
        <translation>关闭标签页</translation>
    </message>
    <message>
        <source>Close other tabs</source>
        <translation>关闭其他标签页</translation>
    </message>
    <message>
        <source>Close all tabs</source>
        <translation>关闭所有标签页</translation>
    </message>
    <message>
        <source>Copy paths</source>
        <translation>复制路径</translation>
    </message>
    <message>
        <source>Open the folders</source>
        <translation>打开所在文件夹</translation>
    </message>
    <message>
        <source>No file manager could be opened</source>
        <translation>无法打开文件管理器</translation>
    </message>
    <message>
        <source>E&amp;xit</source>
        <translation>退出(&amp;X)</translation>
    </message>
    <message>
        <source>&amp;Tools</source>
        <translation>工具(&amp;T)</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>帮助(&amp;H)</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>关于(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>编辑(&amp;E)</translation>
    </message>
    <message>
        <source>Sessions</source>
        <translation>会话</translation>
    </message>
    <message>
        <source>Sessions panel</source>
        <translation>会话面板</translation>
    </message>
    <message>
        <source>New</source>
        <translation>新建</translation>
    </message>
    <message>
        <source>Ready</source>
        <translation>就绪</translation>
    </message>
    <message>
        <source>Home</source>
        <translation>主页</translation>
    </message>
    <message>
        <source>%1 paths dropped; this session takes %2</source>
        <translation>拖放了 %1 个路径；此会话只接受 %2 个</translation>
    </message>
    <message>
        <source>Left folder selected: %1 — right-click another item and choose Velmora: set as right side</source>
        <translation>已选择左侧文件夹：%1 — 请右键单击另一个项目，然后选择“用 Velmora 选为比较右侧”</translation>
    </message>
    <message>
        <source>Left file selected: %1 — right-click another item and choose Velmora: set as right side</source>
        <translation>已选择左侧文件：%1 — 请右键单击另一个项目，然后选择“用 Velmora 选为比较右侧”</translation>
    </message>
    <message>
        <source>Compare opened</source>
        <translation>已打开比较</translation>
    </message>
    <message>
        <source>Date and size (rules)</source>
        <translation>日期和大小（规则）</translation>
    </message>
    <message>
        <source>CRC content compare</source>
        <translation>CRC 内容比较</translation>
    </message>
    <message>
        <source>Binary content compare</source>
        <translation>二进制内容比较</translation>
    </message>
    <message>
        <source>Files on disk were modified externally:
</source>
        <translation>磁盘上的文件已被外部修改：
</translation>
    </message>
    <message>
        <source>  · Left: %1
</source>
        <translation>  · 左侧：%1
</translation>
    </message>
    <message>
        <source>  · Right: %1
</source>
        <translation>  · 右侧：%1
</translation>
    </message>
    <message>
        <source>
Reload from disk before comparing?</source>
        <translation>
比较之前要从磁盘重新加载吗？</translation>
    </message>
    <message>
        <source>
The editor has unsaved changes; re-comparing without reloading may discard disk changes.</source>
        <translation>
编辑器中有未保存的更改；不重新加载就再次比较，可能会丢失磁盘上的更改。</translation>
    </message>
    <message>
        <source>External file changed</source>
        <translation>文件被外部修改</translation>
    </message>
    <message>
        <source>Keep the text that is shown</source>
        <translation>保留显示的文本</translation>
    </message>
    <message>
        <source>&amp;Resolve...</source>
        <translation>解决(&amp;R)...</translation>
    </message>
    <message>
        <source>Open the file as a merge, in a tab of its own</source>
        <translation>在单独的标签页中以合并方式打开此文件</translation>
    </message>
    <message>
        <source>%1 has conflict markers.</source>
        <translation>%1 含有冲突标记。</translation>
    </message>
    <message>
        <source>Both files have changed on disk.</source>
        <translation>两侧文件在磁盘上都已更改。</translation>
    </message>
    <message>
        <source>The left file has changed on disk: %1</source>
        <translation>左侧文件在磁盘上已更改：%1</translation>
    </message>
    <message>
        <source>The right file has changed on disk: %1</source>
        <translation>右侧文件在磁盘上已更改：%1</translation>
    </message>
    <message>
        <source>The left file is no longer there: %1</source>
        <translation>左侧文件已不存在：%1</translation>
    </message>
    <message>
        <source>The right file is no longer there: %1</source>
        <translation>右侧文件已不存在：%1</translation>
    </message>
    <message>
        <source>The text shown has unsaved changes, which stay unless you discard them.</source>
        <translation>显示的文本有未保存的更改，除非您放弃，否则会保留。</translation>
    </message>
    <message>
        <source>&amp;Reload</source>
        <translation>重新加载(&amp;R)</translation>
    </message>
    <message>
        <source>Compare &amp;without reloading</source>
        <translation>不重新加载直接比较(&amp;W)</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>binary</source>
        <translation>二进制</translation>
    </message>
    <message>
        <source>%1 undecodable, first in line %2</source>
        <translation>%1 处无法解码，首处在第 %2 行</translation>
    </message>
    <message>
        <source>Missing</source>
        <translation>缺失</translation>
    </message>
    <message>
        <source>Left: %1 [%2] | Right: %3 [%4]</source>
        <translation>左侧：%1 [%2] | 右侧：%3 [%4]</translation>
    </message>
    <message>
        <source>No differences under the rules of this comparison, which ignore: %1</source>
        <translation>按本次比较的规则没有差异，规则忽略：%1</translation>
    </message>
    <message>
        <source>%1 rows differ only in that</source>
        <translation>有 %1 行仅在此方面不同</translation>
    </message>
    <message>
        <source>1 row differs only in that</source>
        <translation>有 1 行仅在此方面不同</translation>
    </message>
    <message>
        <source>%1 rows differ only in what is ignored, and count here</source>
        <translation>有 %1 行仅在被忽略的方面不同，此处计入</translation>
    </message>
    <message>
        <source>1 row differs only in what is ignored, and counts here</source>
        <translation>有 1 行仅在被忽略的方面不同，此处计入</translation>
    </message>
    <message>
        <source>%1 rows that count as equal are indented differently, which has meaning in %2</source>
        <translation>有 %1 行视为相同但缩进不同，而缩进在 %2 中有意义</translation>
    </message>
    <message>
        <source>1 row that counts as equal is indented differently, which has meaning in %1</source>
        <translation>有 1 行视为相同但缩进不同，而缩进在 %1 中有意义</translation>
    </message>
    <message>
        <source>%1 unimportant rows count, too</source>
        <translation>另计入 %1 行不重要的差异</translation>
    </message>
    <message>
        <source>1 unimportant row counts, too</source>
        <translation>另计入 1 行不重要的差异</translation>
    </message>
    <message>
        <source>The lines are equal, their ends are not.</source>
        <translation>各行内容相同，换行符不同。</translation>
    </message>
    <message>
        <source>Line ends differ in %1 rows</source>
        <translation>有 %1 行的换行符不同</translation>
    </message>
    <message>
        <source>Line ends differ in 1 row</source>
        <translation>有 1 行的换行符不同</translation>
    </message>
    <message>
        <source>The last line feed is missing on the left</source>
        <translation>左侧缺少末尾换行</translation>
    </message>
    <message>
        <source>The last line feed is missing on the right</source>
        <translation>右侧缺少末尾换行</translation>
    </message>
    <message>
        <source>line ends differ</source>
        <translation>换行符不同</translation>
    </message>
    <message>
        <source>last line feed missing</source>
        <translation>缺少末尾换行</translation>
    </message>
    <message>
        <source>no line feed</source>
        <translation>无换行</translation>
    </message>
    <message>
        <source>white space</source>
        <translation>空白</translation>
    </message>
    <message>
        <source>leading white space</source>
        <translation>行首空白</translation>
    </message>
    <message>
        <source>white space within lines</source>
        <translation>行内空白</translation>
    </message>
    <message>
        <source>trailing white space</source>
        <translation>行尾空白</translation>
    </message>
    <message>
        <source>letter case</source>
        <translation>大小写</translation>
    </message>
    <message>
        <source>line ends</source>
        <translation>换行符</translation>
    </message>
    <message>
        <source>blank lines</source>
        <translation>空行</translation>
    </message>
    <message>
        <source>unimportant text</source>
        <translation>不重要的文本</translation>
    </message>
    <message>
        <source>what replacement rules change</source>
        <translation>替换规则所改动的内容</translation>
    </message>
    <message>
        <source> | </source>
        <translation> | </translation>
    </message>
    <message>
        <source>Count them</source>
        <translation>计入</translation>
    </message>
    <message>
        <source>Ignore them</source>
        <translation>忽略</translation>
    </message>
    <message>
        <source>Count and step to unimportant differences, too (Alt+M)</source>
        <translation>将不重要的差异也计入并可跳转（Alt+M）</translation>
    </message>
    <message>
        <source>Ignore unimportant differences again (Alt+M)</source>
        <translation>重新忽略不重要的差异（Alt+M）</translation>
    </message>
    <message>
        <source>%1 rows in %2 blocks</source>
        <translation>%2 块共 %1 行</translation>
    </message>
    <message>
        <source>%1 rows in 1 block</source>
        <translation>1 块共 %1 行</translation>
    </message>
    <message>
        <source>1 row in 1 block</source>
        <translation>1 块共 1 行</translation>
    </message>
    <message>
        <source>A block is a run of rows that differ; the bar above counts and steps through blocks</source>
        <translation>块是连续的不同行；上方工具栏按块计数和跳转</translation>
    </message>
    <message>
        <source>The current difference block, and how many there are</source>
        <translation>当前差异块及总块数</translation>
    </message>
    <message>
        <source>The texts are identical; only their encodings differ</source>
        <translation>文本相同，仅编码不同</translation>
    </message>
    <message>
        <source>The texts are identical</source>
        <translation>文本相同</translation>
    </message>
    <message>
        <source>No line here</source>
        <translation>此处没有行</translation>
    </message>
    <message>
        <source>Line %1, column %2</source>
        <translation>第 %1 行，第 %2 列</translation>
    </message>
    <message>
        <source>Left file path (drop a file here)...</source>
        <translation>左侧文件路径（可将文件拖放到此处）...</translation>
    </message>
    <message>
        <source>Right file path (drop a file here)...</source>
        <translation>右侧文件路径（可将文件拖放到此处）...</translation>
    </message>
    <message>
        <source>Select left file</source>
        <translation>选择左侧文件</translation>
    </message>
    <message>
        <source>Select right file</source>
        <translation>选择右侧文件</translation>
    </message>
    <message>
        <source>Encoding of the left file</source>
        <translation>左侧文件的编码</translation>
    </message>
    <message>
        <source>Encoding of the right file</source>
        <translation>右侧文件的编码</translation>
    </message>
    <message>
        <source>Auto detect</source>
        <translation>自动检测</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1（%2）</translation>
    </message>
    <message>
        <source>Compare</source>
        <translation>比较</translation>
    </message>
    <message>
        <source>Reload</source>
        <translation>重新加载</translation>
    </message>
    <message>
        <source>Reload both sides from disk</source>
        <translation>从磁盘重新加载两侧</translation>
    </message>
    <message>
        <source>Previous</source>
        <translation>上一处</translation>
    </message>
    <message>
        <source>Previous difference</source>
        <translation>上一处差异</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>下一处</translation>
    </message>
    <message>
        <source>Next difference</source>
        <translation>下一处差异</translation>
    </message>
    <message>
        <source>All</source>
        <translation>全部</translation>
    </message>
    <message>
        <source>Show all lines</source>
        <translation>显示所有行</translation>
    </message>
    <message>
        <source>Differences</source>
        <translation>差异</translation>
    </message>
    <message>
        <source>Show lines that differ</source>
        <translation>显示有差异的行</translation>
    </message>
    <message>
        <source>Identical</source>
        <translation>相同</translation>
    </message>
    <message>
        <source>Show lines that are identical</source>
        <translation>显示相同的行</translation>
    </message>
    <message>
        <source>Swap</source>
        <translation>交换</translation>
    </message>
    <message>
        <source>Swap left and right</source>
        <translation>交换左右两侧</translation>
    </message>
    <message>
        <source>Report</source>
        <translation>报告</translation>
    </message>
    <message>
        <source>Export an HTML report of the differences</source>
        <translation>将差异导出为 HTML 报告</translation>
    </message>
    <message>
        <source>Switch to the other side</source>
        <translation>切换到另一侧</translation>
    </message>
    <message>
        <source>Larger text</source>
        <translation>放大文字</translation>
    </message>
    <message>
        <source>Smaller text</source>
        <translation>缩小文字</translation>
    </message>
    <message>
        <source>Usual text size</source>
        <translation>默认文字大小</translation>
    </message>
    <message>
        <source>Cancel the comparison</source>
        <translation>取消比较</translation>
    </message>
    <message>
        <source>Diff %1/%2</source>
        <translation>差异 %1/%2</translation>
    </message>
    <message>
        <source>Folders are not supported here — use the Folder compare tab.</source>
        <translation>此处不支持文件夹 — 请使用“文件夹比较”标签页。</translation>
    </message>
    <message>
        <source>Cancelling...</source>
        <translation>正在取消...</translation>
    </message>
    <message>
        <source>Select at least one file to compare</source>
        <translation>请至少选择一个要比较的文件</translation>
    </message>
    <message>
        <source>Neither file exists</source>
        <translation>两个文件都不存在</translation>
    </message>
    <message>
        <source>File too large (limit %1 MB). Use folder compare or split the file first.</source>
        <translation>文件过大（上限 %1 MB）。请使用文件夹比较，或先拆分文件。</translation>
    </message>
    <message>
        <source>Comparing...</source>
        <translation>正在比较...</translation>
    </message>
    <message>
        <source>The work ended unexpectedly: %1</source>
        <translation>处理意外中止：%1</translation>
    </message>
    <message>
        <source>The work ended unexpectedly</source>
        <translation>处理意外中止</translation>
    </message>
    <message>
        <source>Not enough memory to compare these files</source>
        <translation>内存不足，无法比较这些文件</translation>
    </message>
    <message>
        <source>The replacement rules make the left text many times as long: not compared</source>
        <translation>替换规则使左侧文本增长到许多倍：未比较</translation>
    </message>
    <message>
        <source>The replacement rules make the right text many times as long: not compared</source>
        <translation>替换规则使右侧文本增长到许多倍：未比较</translation>
    </message>
    <message>
        <source>Cannot open left file: %1</source>
        <translation>无法打开左侧文件：%1</translation>
    </message>
    <message>
        <source>Cannot open right file: %1</source>
        <translation>无法打开右侧文件：%1</translation>
    </message>
    <message>
        <source>Compare cancelled</source>
        <translation>比较已取消</translation>
    </message>
    <message>
        <source>Compare done: %1 diffs (added %2, removed %3, modified %4) | Left: %5 lines, Right: %6 lines</source>
        <translation>比较完成：%1 处差异（新增 %2，删除 %3，修改 %4） | 左侧：%5 行，右侧：%6 行</translation>
    </message>
    <message>
        <source>Reading lines: %1 of %2</source>
        <translation>正在读取行：%1 / %2</translation>
    </message>
    <message>
        <source>Matching lines: %1 of %2</source>
        <translation>正在匹配行：%1 / %2</translation>
    </message>
    <message>
        <source>Drop a file here</source>
        <translation>将文件拖放到此处</translation>
    </message>
    <message>
        <source>or choose one above, then press Compare (F5)</source>
        <translation>或在上方选择文件，然后按“比较”(F5)</translation>
    </message>
    <message>
        <source>Not shown</source>
        <translation>不显示</translation>
    </message>
    <message>
        <source>The other side is no text.</source>
        <translation>另一侧不是文本。</translation>
    </message>
    <message>
        <source>No file on this side</source>
        <translation>此侧没有文件</translation>
    </message>
    <message>
        <source>The other side is compared with an empty text.</source>
        <translation>另一侧将与空文本比较。</translation>
    </message>
    <message>
        <source>Binary content</source>
        <translation>二进制内容</translation>
    </message>
    <message>
        <source>This file holds bytes that no text has. Hex compare shows them one by one.</source>
        <translation>此文件含有文本中不会出现的字节。“十六进制比较”可逐字节显示。</translation>
    </message>
    <message>
        <source>Open in Hex compare</source>
        <translation>在“十六进制比较”中打开</translation>
    </message>
    <message>
        <source>Show as text</source>
        <translation>显示为文本</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>复制</translation>
    </message>
    <message>
        <source>Select all</source>
        <translation>全选</translation>
    </message>
    <message>
        <source>Compare the clipboard&apos;s text as this side</source>
        <translation>将剪贴板中的文本作为此侧进行比较</translation>
    </message>
    <message>
        <source>No comparison result to export</source>
        <translation>没有可导出的比较结果</translation>
    </message>
    <message>
        <source>Export diff report</source>
        <translation>导出差异报告</translation>
    </message>
    <message>
        <source>Older file</source>
        <translation>较旧的文件</translation>
    </message>
    <message>
        <source>Unique file</source>
        <translation>单侧独有的文件</translation>
    </message>
    <message>
        <source>Newer or different file</source>
        <translation>较新或不同的文件</translation>
    </message>
    <message>
        <source>Unknown; open to scan</source>
        <translation>未知；打开以扫描</translation>
    </message>
    <message>
        <source>Unknown file</source>
        <translation>未知文件</translation>
    </message>
    <message>
        <source>Unknown; scanning</source>
        <translation>未知；正在扫描</translation>
    </message>
    <message>
        <source>Contains identical files only</source>
        <translation>仅包含相同的文件</translation>
    </message>
    <message>
        <source>Identical file</source>
        <translation>相同的文件</translation>
    </message>
    <message>
        <source>Contains older files</source>
        <translation>包含较旧的文件</translation>
    </message>
    <message>
        <source>Contains unique files</source>
        <translation>包含单侧独有的文件</translation>
    </message>
    <message>
        <source>Contains newer or different files</source>
        <translation>包含较新或不同的文件</translation>
    </message>
    <message>
        <source>Contains unique and older files</source>
        <translation>包含单侧独有和较旧的文件</translation>
    </message>
    <message>
        <source>Contains newer/different and older files</source>
        <translation>包含较新/不同和较旧的文件</translation>
    </message>
    <message>
        <source>Contains newer/different and unique files</source>
        <translation>包含较新/不同和单侧独有的文件</translation>
    </message>
    <message>
        <source>Contains newer/different, unique, and older files</source>
        <translation>包含较新/不同、单侧独有和较旧的文件</translation>
    </message>
    <message>
        <source>Unique folder (one side only)</source>
        <translation>单侧独有的文件夹（仅一侧存在）</translation>
    </message>
    <message>
        <source>Contains filtered files only</source>
        <translation>仅包含被过滤的文件</translation>
    </message>
    <message>
        <source>Filtered file</source>
        <translation>被过滤的文件</translation>
    </message>
    <message>
        <source>Legend</source>
        <translation>图例</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>文件夹</translation>
    </message>
    <message>
        <source>File</source>
        <translation>文件</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Options...</source>
        <translation>选项...</translation>
    </message>
    <message>
        <source>Past operations...</source>
        <translation>操作历史...</translation>
    </message>
    <message>
        <source>Past operations</source>
        <translation>操作历史</translation>
    </message>
    <message>
        <source>Unknown operation</source>
        <translation>未知操作</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>时间</translation>
    </message>
    <message>
        <source>State</source>
        <translation>状态</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>已完成</translation>
    </message>
    <message>
        <source>Operation</source>
        <translation>操作</translation>
    </message>
    <message>
        <source>Cannot be read</source>
        <translation>无法读取</translation>
    </message>
    <message>
        <source>At work</source>
        <translation>正在进行</translation>
    </message>
    <message>
        <source>Undone</source>
        <translation>已撤销</translation>
    </message>
    <message>
        <source>Undone in part</source>
        <translation>部分已撤销</translation>
    </message>
    <message>
        <source>Continued</source>
        <translation>已继续完成</translation>
    </message>
    <message>
        <source>Interrupted</source>
        <translation>已中断</translation>
    </message>
    <message>
        <source>&amp;Undo...</source>
        <translation>撤销(&amp;U)...</translation>
    </message>
    <message>
        <source>&amp;Continue...</source>
        <translation>继续(&amp;C)...</translation>
    </message>
    <message>
        <source>Shows what would be taken back first</source>
        <translation>先显示将撤销的内容</translation>
    </message>
    <message>
        <source>Shows what is still to be done first</source>
        <translation>先显示尚待执行的内容</translation>
    </message>
    <message>
        <source>What it has done</source>
        <translation>已执行的内容</translation>
    </message>
    <message>
        <source>Nothing has been copied, moved or deleted yet. What is done with files in a folder comparison appears here and can be undone.</source>
        <translation>尚未复制、移动或删除任何内容。在文件夹比较中对文件执行的操作会显示在这里，并且可以撤销。</translation>
    </message>
    <message>
        <source>The program ended in the middle of an operation. What it had begun is whole or not there at all; it can be taken back or gone on with, now or later.</source>
        <translation>程序在操作进行中结束。已开始的每一项要么完整，要么不存在；可以现在或以后撤销或继续该操作。</translation>
    </message>
    <message>
        <source>&amp;Legend</source>
        <translation>图例(&amp;L)</translation>
    </message>
    <message>
        <source>&amp;Keyboard shortcuts</source>
        <translation>快捷键(&amp;K)</translation>
    </message>
    <message>
        <source>Keyboard shortcuts</source>
        <translation>快捷键</translation>
    </message>
    <message>
        <source>Search for a command or a key</source>
        <translation>搜索命令或按键</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>命令</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>按键</translation>
    </message>
    <message>
        <source>Everywhere</source>
        <translation>所有位置</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1、%2</translation>
    </message>
    <message>
        <source>Restart Velmora for a full language update (menus, home, new tabs).</source>
        <translation>重新启动 Velmora 后，语言才会全部更新（菜单、主页、新标签页）。</translation>
    </message>
    <message>
        <source>Add Velmora to Explorer context menu</source>
        <translation>将 Velmora 添加到资源管理器右键菜单</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>选项</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>外观</translation>
    </message>
    <message>
        <source>Integration</source>
        <translation>集成</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>应用</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>浅色</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>深色</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>预览</translation>
    </message>
    <message>
        <source>Theme:</source>
        <translation>主题：</translation>
    </message>
    <message>
        <source>Language:</source>
        <translation>语言：</translation>
    </message>
    <message>
        <source>Font of texts:</source>
        <translation>文本字体：</translation>
    </message>
    <message>
        <source>Size of texts:</source>
        <translation>文本字号：</translation>
    </message>
    <message>
        <source> pt</source>
        <translation> 磅</translation>
    </message>
    <message>
        <source>Tab width:</source>
        <translation>制表符宽度：</translation>
    </message>
    <message>
        <source>Theme, colors, and fonts</source>
        <translation>主题、颜色和字体</translation>
    </message>
    <message>
        <source>When enabled, Explorer shows:
  · Velmora: set as left side
  · Velmora: set as right side
Set left on one item, then right on another to open a compare tab.
Stored under HKCU (no admin). Uncheck to remove.</source>
        <translation>启用后，资源管理器会显示：
  · 用 Velmora 选为比较左侧
  · 用 Velmora 选为比较右侧
先将一个项目设为左侧，再将另一个项目设为右侧，即可打开比较标签页。
设置保存在 HKCU 下（无需管理员权限）。取消勾选即可移除。</translation>
    </message>
    <message>
        <source>Explorer integration</source>
        <translation>资源管理器集成</translation>
    </message>
    <message>
        <source>Registration failed</source>
        <translation>注册失败</translation>
    </message>
    <message>
        <source>Cannot register the Explorer context menu. Check permissions and the executable path.</source>
        <translation>无法注册资源管理器右键菜单。请检查权限和可执行文件路径。</translation>
    </message>
    <message>
        <source>Velmora — diff report</source>
        <translation>Velmora — 差异报告</translation>
    </message>
    <message>
        <source>Velmora diff report</source>
        <translation>Velmora 差异报告</translation>
    </message>
    <message>
        <source>Left: %1</source>
        <translation>左侧：%1</translation>
    </message>
    <message>
        <source>Right: %1</source>
        <translation>右侧：%1</translation>
    </message>
    <message>
        <source>Generated at</source>
        <translation>生成时间</translation>
    </message>
    <message>
        <source>Left side</source>
        <translation>左侧</translation>
    </message>
    <message>
        <source>Right side</source>
        <translation>右侧</translation>
    </message>
    <message>
        <source>All lines</source>
        <translation>全部行</translation>
    </message>
    <message>
        <source>All lines, with marks and links</source>
        <translation>全部行，带标记和链接</translation>
    </message>
    <message>
        <source>Differing parts, with marks and links</source>
        <translation>仅不同部分，带标记和链接</translation>
    </message>
    <message>
        <source>Diff summary: %1 total (added %2, removed %3, modified %4)</source>
        <translation>差异摘要：共 %1 处（新增 %2，删除 %3，修改 %4）</translation>
    </message>
    <message>
        <source>Report written: %1</source>
        <translation>报告已写入：%1</translation>
    </message>
    <message>
        <source>Cannot write file: %1</source>
        <translation>无法写入文件：%1</translation>
    </message>
    <message>
        <source>Save workspace as(&amp;V)...</source>
        <translation>工作区另存为(&amp;V)...</translation>
    </message>
    <message>
        <source>Open workspace(&amp;O)...</source>
        <translation>打开工作区(&amp;O)...</translation>
    </message>
    <message>
        <source>Open session file(&amp;N)...</source>
        <translation>打开会话文件(&amp;N)...</translation>
    </message>
    <message>
        <source>Save current session as(&amp;S)...</source>
        <translation>当前会话另存为(&amp;S)...</translation>
    </message>
    <message>
        <source>Recent sessions</source>
        <translation>最近的会话</translation>
    </message>
    <message>
        <source>Save session file as</source>
        <translation>会话文件另存为</translation>
    </message>
    <message>
        <source>Name:</source>
        <translation>名称：</translation>
    </message>
    <message>
        <source>Type:</source>
        <translation>类型：</translation>
    </message>
    <message>
        <source>Left:</source>
        <translation>左侧：</translation>
    </message>
    <message>
        <source>Right:</source>
        <translation>右侧：</translation>
    </message>
    <message>
        <source>Base:</source>
        <translation>基准：</translation>
    </message>
    <message>
        <source>Edit session</source>
        <translation>编辑会话</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Velmora session (*.kvsession)</source>
        <translation>Velmora 会话 (*.kvsession)</translation>
    </message>
    <message>
        <source>Velmora workspace (*.kvworkspace)</source>
        <translation>Velmora 工作区 (*.kvworkspace)</translation>
    </message>
    <message>
        <source>All files (*.*)</source>
        <translation>所有文件 (*.*)</translation>
    </message>
    <message>
        <source>Switch to a compare or tool tab first</source>
        <translation>请先切换到比较或工具标签页</translation>
    </message>
    <message>
        <source>Cannot determine session type for this tab</source>
        <translation>无法确定此标签页的会话类型</translation>
    </message>
    <message>
        <source>Save session</source>
        <translation>保存会话</translation>
    </message>
    <message>
        <source>Session saved: %1</source>
        <translation>会话已保存：%1</translation>
    </message>
    <message>
        <source>Failed to save session</source>
        <translation>保存会话失败</translation>
    </message>
    <message>
        <source>Open session file</source>
        <translation>打开会话文件</translation>
    </message>
    <message>
        <source>Open session</source>
        <translation>打开会话</translation>
    </message>
    <message>
        <source>Cannot open session file</source>
        <translation>无法打开会话文件</translation>
    </message>
    <message>
        <source>Invalid session file format.</source>
        <translation>会话文件格式无效。</translation>
    </message>
    <message>
        <source>Session file is missing the type field.</source>
        <translation>会话文件缺少类型字段。</translation>
    </message>
    <message>
        <source>Session opened: %1</source>
        <translation>会话已打开：%1</translation>
    </message>
    <message>
        <source>Save workspace</source>
        <translation>保存工作区</translation>
    </message>
    <message>
        <source>Failed to save workspace</source>
        <translation>保存工作区失败</translation>
    </message>
    <message>
        <source>Workspace saved: %1 (%2 open tabs)</source>
        <translation>工作区已保存：%1（%2 个打开的标签页）</translation>
    </message>
    <message>
        <source>Open workspace</source>
        <translation>打开工作区</translation>
    </message>
    <message>
        <source>Cannot open workspace file</source>
        <translation>无法打开工作区文件</translation>
    </message>
    <message>
        <source>Open failed</source>
        <translation>打开失败</translation>
    </message>
    <message>
        <source>Invalid workspace file format.</source>
        <translation>工作区文件格式无效。</translation>
    </message>
    <message>
        <source>This workspace has no saved sessions.</source>
        <translation>此工作区没有保存的会话。</translation>
    </message>
    <message>
        <source>Replace current session history with %1 session(s) from the workspace?</source>
        <translation>要用工作区中的 %1 个会话替换当前会话历史吗？</translation>
    </message>
    <message>
        <source>Open %1 session(s) from the workspace as tabs?</source>
        <translation>要将工作区中的 %1 个会话作为标签页打开吗？</translation>
    </message>
    <message>
        <source>Restore %1 saved open tab(s)?</source>
        <translation>要恢复 %1 个已保存的标签页吗？</translation>
    </message>
    <message>
        <source>Workspace loaded: %1</source>
        <translation>工作区已加载：%1</translation>
    </message>
    <message>
        <source>No recent session to edit</source>
        <translation>没有可编辑的最近会话</translation>
    </message>
    <message>
        <source>Delete session</source>
        <translation>删除会话</translation>
    </message>
    <message>
        <source>Remove &quot;%1&quot; from auto-save history?</source>
        <translation>要从自动保存历史中移除“%1”吗？</translation>
    </message>
    <message>
        <source>Session removed from auto-save</source>
        <translation>会话已从自动保存中移除</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>今天</translation>
    </message>
    <message>
        <source>Yesterday</source>
        <translation>昨天</translation>
    </message>
    <message>
        <source>Auto-save</source>
        <translation>自动保存</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>打开</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>编辑</translation>
    </message>
    <message>
        <source>Save as...</source>
        <translation>另存为...</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>Match case</source>
        <translation>区分大小写</translation>
    </message>
    <message>
        <source>Whole words</source>
        <translation>全字匹配</translation>
    </message>
    <message>
        <source>Regular expression</source>
        <translation>正则表达式</translation>
    </message>
    <message>
        <source>Previous match (Shift+F3)</source>
        <translation>上一个匹配项 (Shift+F3)</translation>
    </message>
    <message>
        <source>Next match (F3)</source>
        <translation>下一个匹配项 (F3)</translation>
    </message>
    <message>
        <source>Close (Esc)</source>
        <translation>关闭 (Esc)</translation>
    </message>
    <message>
        <source>Find in this side</source>
        <translation>在此侧查找</translation>
    </message>
    <message>
        <source>Replace</source>
        <translation>替换</translation>
    </message>
    <message>
        <source>Replace (Ctrl+H)</source>
        <translation>替换 (Ctrl+H)</translation>
    </message>
    <message>
        <source>Replace all</source>
        <translation>全部替换</translation>
    </message>
    <message>
        <source>Replace with</source>
        <translation>替换为</translation>
    </message>
    <message>
        <source>With a regular expression, \1 or $1 stands for its first group, \n for a line break and \t for a tabulator</source>
        <translation>使用正则表达式时，\1 或 $1 表示第一个分组，\n 表示换行，\t 表示制表符</translation>
    </message>
    <message>
        <source>Replace the selected match and go to the next one</source>
        <translation>替换选中的匹配项并转到下一个</translation>
    </message>
    <message>
        <source>Replace all matches in the whole text of this side, shown or not, as one step</source>
        <translation>一步替换此侧整个文本中的所有匹配项，无论是否显示</translation>
    </message>
    <message>
        <source>Replacing...</source>
        <translation>正在替换...</translation>
    </message>
    <message>
        <source>Replacing: %1 %</source>
        <translation>正在替换：%1 %</translation>
    </message>
    <message>
        <source>Nothing was replaced</source>
        <translation>未替换任何内容</translation>
    </message>
    <message>
        <source>Nothing was replaced: the text would be too long</source>
        <translation>未替换任何内容：文本会过长</translation>
    </message>
    <message>
        <source>Replaced matches: %1</source>
        <translation>已替换的匹配项：%1</translation>
    </message>
    <message>
        <source>The expression is too slow for %1 lines, which stay as they are</source>
        <translation>表达式在 %1 行上过慢，这些行保持原样</translation>
    </message>
    <message>
        <source>No match</source>
        <translation>无匹配项</translation>
    </message>
    <message>
        <source>Matches: %1</source>
        <translation>匹配项：%1</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 / %2</translation>
    </message>
    <message>
        <source>Searching...</source>
        <translation>正在查找...</translation>
    </message>
    <message>
        <source>Not a regular expression: %1</source>
        <translation>不是有效的正则表达式：%1</translation>
    </message>
    <message>
        <source>Find</source>
        <translation>查找</translation>
    </message>
    <message>
        <source>Go to line</source>
        <translation>转到行</translation>
    </message>
    <message>
        <source>Line details</source>
        <translation>行详情</translation>
    </message>
    <message>
        <source>Show the two current lines one above the other</source>
        <translation>上下对照显示当前的两行</translation>
    </message>
    <message>
        <source>Next match</source>
        <translation>下一个匹配项</translation>
    </message>
    <message>
        <source>Previous match</source>
        <translation>上一个匹配项</translation>
    </message>
    <message>
        <source>Line number (1 - %1):</source>
        <translation>行号 (1 - %1)：</translation>
    </message>
    <message>
        <source>The two current lines</source>
        <translation>当前的两行</translation>
    </message>
    <message>
        <source>&amp;Never align differences</source>
        <translation>从不对齐有差异的行(&amp;N)</translation>
    </message>
    <message>
        <source>Use &amp;closeness matching</source>
        <translation>使用邻近匹配(&amp;C)</translation>
    </message>
    <message>
        <source>Prefer closer pairings within diff blocks</source>
        <translation>在差异块内优先配对较接近的行</translation>
    </message>
    <message>
        <source>&amp;Unaligned</source>
        <translation>不对齐(&amp;U)</translation>
    </message>
    <message>
        <source>&amp;Standard alignment</source>
        <translation>标准对齐(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Myers O(ND) alignment</source>
        <translation>Myers O(ND) 对齐(&amp;M)</translation>
    </message>
    <message>
        <source>&amp;Patience Diff alignment</source>
        <translation>Patience Diff 对齐(&amp;P)</translation>
    </message>
    <message>
        <source>S&amp;kew tolerance:</source>
        <translation>偏移容差(&amp;K)：</translation>
    </message>
    <message>
        <source>lines (default 2000)</source>
        <translation>行（默认 2000）</translation>
    </message>
    <message>
        <source>File type:</source>
        <translation>文件类型：</translation>
    </message>
    <message>
        <source>Encoding:</source>
        <translation>编码：</translation>
    </message>
    <message>
        <source>Line ends:</source>
        <translation>行尾：</translation>
    </message>
    <message>
        <source>As in the file</source>
        <translation>与文件相同</translation>
    </message>
    <message>
        <source>The line ends that the file has, and those that it gets when this side is saved</source>
        <translation>文件现有的换行符，以及保存此侧时写入的换行符</translation>
    </message>
    <message>
        <source>Everything else</source>
        <translation>其它一切</translation>
    </message>
    <message>
        <source>Detected</source>
        <translation>检测到</translation>
    </message>
    <message>
        <source>&amp;Left</source>
        <translation>左侧(&amp;L)</translation>
    </message>
    <message>
        <source>&amp;Right</source>
        <translation>右侧(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Same format as the left side</source>
        <translation>与左侧格式相同(&amp;S)</translation>
    </message>
    <message>
        <source>The right file is read with the choices of the left one</source>
        <translation>按左侧文件的选择读取右侧文件</translation>
    </message>
    <message>
        <source>&amp;Leading whitespace</source>
        <translation>行首空白(&amp;L)</translation>
    </message>
    <message>
        <source>&amp;Embedded whitespace</source>
        <translation>行内空白(&amp;E)</translation>
    </message>
    <message>
        <source>&amp;Trailing whitespace</source>
        <translation>行尾空白(&amp;T)</translation>
    </message>
    <message>
        <source>E&amp;verything else</source>
        <translation>其它一切(&amp;V)</translation>
    </message>
    <message>
        <source>&amp;Character case</source>
        <translation>字母大小写(&amp;C)</translation>
    </message>
    <message>
        <source>Mark grammar elements that are important to the comparison:</source>
        <translation>勾选对比较重要的语法元素：</translation>
    </message>
    <message>
        <source>Edit Grammar</source>
        <translation>编辑语法</translation>
    </message>
    <message>
        <source>Text importance rules (*.json);;All files (*.*)</source>
        <translation>文本重要性规则 (*.json);;所有文件 (*.*)</translation>
    </message>
    <message>
        <source>Cannot read file: %1</source>
        <translation>无法读取文件：%1</translation>
    </message>
    <message>
        <source>Invalid JSON: %1</source>
        <translation>JSON 无效：%1</translation>
    </message>
    <message>
        <source>Unrecognized importance rules file (expected schema %1).</source>
        <translation>无法识别的重要性规则文件（应为架构 %1）。</translation>
    </message>
    <message>
        <source>The file holds no importance rules.</source>
        <translation>文件中没有重要性规则。</translation>
    </message>
    <message>
        <source>&amp;Orphan lines are always important</source>
        <translation>单侧独有的行始终重要(&amp;O)</translation>
    </message>
    <message>
        <source>Compare line endings (PC/&amp;Mac/Unix)</source>
        <translation>比较行尾 (PC/Mac/Unix)(&amp;M)</translation>
    </message>
    <message>
        <source>Ignore &amp;blank lines</source>
        <translation>忽略空行(&amp;B)</translation>
    </message>
    <message>
        <source>Add an unimportant text rule</source>
        <translation>添加不重要文本规则</translation>
    </message>
    <message>
        <source>Edit selected unimportant text rule</source>
        <translation>编辑所选的不重要文本规则</translation>
    </message>
    <message>
        <source>Remove selected unimportant text rule</source>
        <translation>移除所选的不重要文本规则</translation>
    </message>
    <message>
        <source>Skip lines that are entirely blank</source>
        <translation>跳过完全空白的行</translation>
    </message>
    <message>
        <source>&amp;Unimportant text:</source>
        <translation>不重要的文本(&amp;U)：</translation>
    </message>
    <message>
        <source>Apply comparison &amp;preset…</source>
        <translation>应用比较预设(&amp;P)…</translation>
    </message>
    <message>
        <source>Load a built-in text comparison preset</source>
        <translation>加载内置的文本比较预设</translation>
    </message>
    <message>
        <source>Apply built-in text comparison rules</source>
        <translation>应用内置的文本比较规则</translation>
    </message>
    <message>
        <source>Edit &amp;Grammar...</source>
        <translation>编辑语法(&amp;G)...</translation>
    </message>
    <message>
        <source>Open grammar importance editor</source>
        <translation>打开语法重要性编辑器</translation>
    </message>
    <message>
        <source>Clipboar&amp;d</source>
        <translation>剪贴板(&amp;D)</translation>
    </message>
    <message>
        <source>Copy unimportant text list to clipboard / paste from clipboard</source>
        <translation>将不重要文本列表复制到剪贴板 / 从剪贴板粘贴</translation>
    </message>
    <message>
        <source>&amp;Copy list</source>
        <translation>复制列表(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Paste list</source>
        <translation>粘贴列表(&amp;P)</translation>
    </message>
    <message>
        <source>&amp;Import from file...</source>
        <translation>从文件导入(&amp;I)...</translation>
    </message>
    <message>
        <source>Load grammar and unimportant-text rules from a JSON file</source>
        <translation>从 JSON 文件加载语法和不重要文本规则</translation>
    </message>
    <message>
        <source>E&amp;xport to file...</source>
        <translation>导出到文件(&amp;X)...</translation>
    </message>
    <message>
        <source>Save grammar and unimportant-text rules to a JSON file</source>
        <translation>将语法和不重要文本规则保存为 JSON 文件</translation>
    </message>
    <message>
        <source>Unimportant text</source>
        <translation>不重要的文本</translation>
    </message>
    <message>
        <source>Replace the list with text from the clipboard?</source>
        <translation>要用剪贴板中的文本替换此列表吗？</translation>
    </message>
    <message>
        <source>Import importance rules</source>
        <translation>导入重要性规则</translation>
    </message>
    <message>
        <source>Import failed</source>
        <translation>导入失败</translation>
    </message>
    <message>
        <source>Export importance rules</source>
        <translation>导出重要性规则</translation>
    </message>
    <message>
        <source>Export failed</source>
        <translation>导出失败</translation>
    </message>
    <message>
        <source>Replacement rule</source>
        <translation>替换规则</translation>
    </message>
    <message>
        <source>&amp;Find text:</source>
        <translation>查找文本(&amp;F)：</translation>
    </message>
    <message>
        <source>&amp;Replace with:</source>
        <translation>替换为(&amp;R)：</translation>
    </message>
    <message>
        <source>%1  -&gt;  %2</source>
        <translation>%1  -&gt;  %2</translation>
    </message>
    <message>
        <source>Before lines are compared, each rule replaces every occurrence of its text, in the order of the list. The files themselves stay as they are.</source>
        <translation>比较各行之前，规则按列表顺序依次替换其文本的每一处出现。文件本身保持不变。</translation>
    </message>
    <message>
        <source>Add a replacement rule</source>
        <translation>添加替换规则</translation>
    </message>
    <message>
        <source>Edit the selected replacement rule</source>
        <translation>编辑所选的替换规则</translation>
    </message>
    <message>
        <source>Remove the selected replacement rule</source>
        <translation>移除所选的替换规则</translation>
    </message>
    <message>
        <source>Add...</source>
        <translation>添加...</translation>
    </message>
    <message>
        <source>Edit...</source>
        <translation>编辑...</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>移除</translation>
    </message>
    <message>
        <source>&amp;Disable editing</source>
        <translation>禁止编辑(&amp;D)</translation>
    </message>
    <message>
        <source>Disable &amp;editing</source>
        <translation>禁止编辑(&amp;E)</translation>
    </message>
    <message>
        <source>Prevent editing the left path in the main window</source>
        <translation>禁止在主窗口中编辑左侧路径</translation>
    </message>
    <message>
        <source>Prevent editing the right path in the main window</source>
        <translation>禁止在主窗口中编辑右侧路径</translation>
    </message>
    <message>
        <source>&amp;Copy left path to right</source>
        <translation>将左侧路径复制到右侧(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Swap left and right paths</source>
        <translation>交换左右路径(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Left file:</source>
        <translation>左侧文件(&amp;L)：</translation>
    </message>
    <message>
        <source>&amp;Right file:</source>
        <translation>右侧文件(&amp;R)：</translation>
    </message>
    <message>
        <source>Descri&amp;ption:</source>
        <translation>描述(&amp;P)：</translation>
    </message>
    <message>
        <source>Session Settings - Text Compare</source>
        <translation>会话设置 - 文本比较</translation>
    </message>
    <message>
        <source>Specs</source>
        <translation>规格</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>格式</translation>
    </message>
    <message>
        <source>Importance</source>
        <translation>重要性</translation>
    </message>
    <message>
        <source>Alignment</source>
        <translation>对齐</translation>
    </message>
    <message>
        <source>Replacements</source>
        <translation>替换</translation>
    </message>
    <message>
        <source>Use for this view only</source>
        <translation>仅用于此视图</translation>
    </message>
    <message>
        <source>Save as default settings</source>
        <translation>保存为默认设置</translation>
    </message>
    <message>
        <source>&amp;Where these settings apply</source>
        <translation>这些设置的应用范围(&amp;W)</translation>
    </message>
    <message>
        <source>Custom</source>
        <translation>自定义</translation>
    </message>
    <message>
        <source>Preset: %1</source>
        <translation>预设：%1</translation>
    </message>
    <message>
        <source>&amp;Text or regular expression:</source>
        <translation>文本或正则表达式(&amp;T)：</translation>
    </message>
    <message>
        <source>⚠ Not a regular expression, so it only counts as plain text: %1</source>
        <translation>⚠ 不是有效的正则表达式，只作为纯文本使用：%1</translation>
    </message>
    <message>
        <source>There is no text to edit yet: compare first</source>
        <translation>尚无可编辑的文本：请先进行比较</translation>
    </message>
    <message>
        <source>The texts are locked: switch on &quot;Enable editing&quot; to change them</source>
        <translation>文本已锁定：请打开“启用编辑”再修改</translation>
    </message>
    <message>
        <source>This side is read-only by the session&apos;s settings</source>
        <translation>此侧在会话设置中设为只读</translation>
    </message>
    <message>
        <source>This side is a copy and cannot be changed: %1</source>
        <translation>此侧是副本，无法更改：%1</translation>
    </message>
    <message>
        <source>A copy that cannot be changed here</source>
        <translation>此处无法更改的副本</translation>
    </message>
    <message>
        <source>This session is on copies that nobody can come back to</source>
        <translation>此会话使用的是无法再次打开的副本</translation>
    </message>
    <message>
        <source>This side holds bytes that no text has and is not edited here</source>
        <translation>此侧含有文本中不会出现的字节，不能在此编辑</translation>
    </message>
    <message>
        <source>This side holds bytes that its encoding does not know: saving would lose them</source>
        <translation>此侧含有其编码无法识别的字节：保存会丢失这些字节</translation>
    </message>
    <message>
        <source>There is no text to save yet: compare first</source>
        <translation>尚无可保存的文本：请先进行比较</translation>
    </message>
    <message>
        <source>Save left file</source>
        <translation>保存左侧文件</translation>
    </message>
    <message>
        <source>Save right file</source>
        <translation>保存右侧文件</translation>
    </message>
    <message>
        <source>Another program has changed this file since it was read:
%1

Write over it?</source>
        <translation>此文件在读取之后已被其他程序修改：
%1

要覆盖它吗？</translation>
    </message>
    <message>
        <source>Line %1 holds the character %2 (%3), which has no place in %4. Nothing was written.</source>
        <translation>第 %1 行含有字符 %2 (%3)，%4 无法表示它。未写入任何内容。</translation>
    </message>
    <message>
        <source>%1 would write lines that were not edited in other bytes. Nothing was written.</source>
        <translation>若以 %1 写入，未编辑的行也会变成不同的字节。未写入任何内容。</translation>
    </message>
    <message>
        <source>Left file saved: %1</source>
        <translation>左侧文件已保存：%1</translation>
    </message>
    <message>
        <source>Right file saved: %1</source>
        <translation>右侧文件已保存：%1</translation>
    </message>
    <message>
        <source>Save failed</source>
        <translation>保存失败</translation>
    </message>
    <message>
        <source>There are unsaved changes. Reload both sides from disk?</source>
        <translation>存在未保存的更改。要从磁盘重新加载两侧吗？</translation>
    </message>
    <message>
        <source>The left side has unsaved changes. Reload from disk?</source>
        <translation>左侧有未保存的更改。要从磁盘重新加载吗？</translation>
    </message>
    <message>
        <source>The right side has unsaved changes. Reload from disk?</source>
        <translation>右侧有未保存的更改。要从磁盘重新加载吗？</translation>
    </message>
    <message>
        <source>Unsaved changes</source>
        <translation>未保存的更改</translation>
    </message>
    <message>
        <source>The texts shown have unsaved changes. Discard them and compare other files?</source>
        <translation>所显示的文本有未保存的更改。要放弃这些更改并比较其他文件吗？</translation>
    </message>
    <message>
        <source>Move the selected rule up (Alt+Up)</source>
        <translation>将所选规则上移 (Alt+Up)</translation>
    </message>
    <message>
        <source>Move the selected rule down (Alt+Down)</source>
        <translation>将所选规则下移 (Alt+Down)</translation>
    </message>
    <message>
        <source>Copy to the right</source>
        <translation>复制到右侧</translation>
    </message>
    <message>
        <source>Copy the selected lines or the current difference to the right side</source>
        <translation>将所选行或当前差异复制到右侧</translation>
    </message>
    <message>
        <source>Copy to the left</source>
        <translation>复制到左侧</translation>
    </message>
    <message>
        <source>Copy the selected lines or the current difference to the left side</source>
        <translation>将所选行或当前差异复制到左侧</translation>
    </message>
    <message>
        <source>Save left</source>
        <translation>保存左侧</translation>
    </message>
    <message>
        <source>Save right</source>
        <translation>保存右侧</translation>
    </message>
    <message>
        <source>Save this side</source>
        <translation>保存此侧</translation>
    </message>
    <message>
        <source>Save this side as...</source>
        <translation>此侧另存为...</translation>
    </message>
    <message>
        <source>New text</source>
        <translation>新文本</translation>
    </message>
    <message>
        <source>Begin an empty text in a tab of its own</source>
        <translation>在新标签页中新建空文本</translation>
    </message>
    <message>
        <source>Open...</source>
        <translation>打开...</translation>
    </message>
    <message>
        <source>Open a text file</source>
        <translation>打开一个文本文件</translation>
    </message>
    <message>
        <source>Read the file again</source>
        <translation>重新读取文件</translation>
    </message>
    <message>
        <source>Compare with...</source>
        <translation>比较...</translation>
    </message>
    <message>
        <source>Choose another file and compare this one with it</source>
        <translation>选择另一个文件与此文件比较</translation>
    </message>
    <message>
        <source>Open text file</source>
        <translation>打开文本文件</translation>
    </message>
    <message>
        <source>No files were opened yet</source>
        <translation>尚未打开过文件</translation>
    </message>
    <message>
        <source>Clear this list</source>
        <translation>清空此列表</translation>
    </message>
    <message>
        <source>A folder is no text: %1</source>
        <translation>文件夹不是文本：%1</translation>
    </message>
    <message>
        <source>The text has unsaved changes. Discard them and open another file?</source>
        <translation>文本有未保存的更改。要放弃更改并打开另一个文件吗？</translation>
    </message>
    <message>
        <source>The text has unsaved changes. Reload from disk?</source>
        <translation>文本有未保存的更改。要从磁盘重新加载吗？</translation>
    </message>
    <message>
        <source>File too large (limit %1 MB).</source>
        <translation>文件过大（上限 %1 MB）。</translation>
    </message>
    <message>
        <source>Reading %1...</source>
        <translation>正在读取 %1...</translation>
    </message>
    <message>
        <source>The file is still being read</source>
        <translation>文件仍在读取中</translation>
    </message>
    <message>
        <source>Not enough memory to open this file</source>
        <translation>内存不足，无法打开此文件</translation>
    </message>
    <message>
        <source>This file is not there yet; saving makes it: %1</source>
        <translation>此文件尚不存在，保存时将创建：%1</translation>
    </message>
    <message>
        <source>Lines read: %1</source>
        <translation>已读取行数：%1</translation>
    </message>
    <message>
        <source>Read-only file</source>
        <translation>只读文件</translation>
    </message>
    <message>
        <source>This file is read-only:
%1

Save the text under another name?</source>
        <translation>此文件是只读的：
%1

要用其他名称保存文本吗？</translation>
    </message>
    <message>
        <source>&amp;Replace the file</source>
        <translation>替换此文件(&amp;R)</translation>
    </message>
    <message>
        <source>Compare with</source>
        <translation>比较对象</translation>
    </message>
    <message>
        <source>Compare the &amp;file</source>
        <translation>比较磁盘上的文件(&amp;F)</translation>
    </message>
    <message>
        <source>A comparison reads the file, which lacks the changes made here. Save them first?</source>
        <translation>比较读取的是文件，其中没有此处所做的更改。要先保存吗？</translation>
    </message>
    <message>
        <source>Save in encoding</source>
        <translation>保存时的编码</translation>
    </message>
    <message>
        <source>Save with line ends</source>
        <translation>保存时的换行符</translation>
    </message>
    <message>
        <source>Syntax</source>
        <translation>语法</translation>
    </message>
    <message>
        <source>Plain text</source>
        <translation>纯文本</translation>
    </message>
    <message>
        <source>As it was read</source>
        <translation>与读取时相同</translation>
    </message>
    <message>
        <source>As each line has it</source>
        <translation>保持每行原样</translation>
    </message>
    <message>
        <source>By name and content</source>
        <translation>按名称和内容</translation>
    </message>
    <message>
        <source>Path of the text file (drop a file here)...</source>
        <translation>文本文件路径（可将文件拖放到此处）...</translation>
    </message>
    <message>
        <source>Select text file</source>
        <translation>选择文本文件</translation>
    </message>
    <message>
        <source>Encoding that the file is read by</source>
        <translation>读取文件所用的编码</translation>
    </message>
    <message>
        <source>There is no text to save yet</source>
        <translation>还没有可保存的文本</translation>
    </message>
    <message>
        <source>The text has no unsaved changes</source>
        <translation>文本没有未保存的更改</translation>
    </message>
    <message>
        <source>Save text file</source>
        <translation>保存文本文件</translation>
    </message>
    <message>
        <source>File saved: %1</source>
        <translation>文件已保存：%1</translation>
    </message>
    <message>
        <source>The text has unsaved changes:
%1

Save them?</source>
        <translation>文本有未保存的更改：
%1

要保存吗？</translation>
    </message>
    <message>
        <source>The file has changed on disk: %1</source>
        <translation>文件在磁盘上已更改：%1</translation>
    </message>
    <message>
        <source>The file is no longer there: %1</source>
        <translation>文件已不存在：%1</translation>
    </message>
    <message>
        <source>This file holds bytes that no text has and is not edited here</source>
        <translation>此文件含有文本中不会出现的字节，不能在此编辑</translation>
    </message>
    <message>
        <source>This file holds bytes that its encoding does not know: saving would lose them. Read it by another encoding to edit it.</source>
        <translation>此文件含有其编码无法识别的字节，保存会丢失它们。请用其他编码读取后再编辑。</translation>
    </message>
    <message>
        <source>Find in the text</source>
        <translation>在文本中查找</translation>
    </message>
    <message>
        <source>Replace all matches in the whole text, as one step</source>
        <translation>替换整个文本中的所有匹配项，作为一步</translation>
    </message>
    <message>
        <source>%1 characters selected</source>
        <translation>已选择 %1 个字符</translation>
    </message>
    <message>
        <source>1 line selected</source>
        <translation>已选择 1 行</translation>
    </message>
    <message>
        <source>%1 lines selected</source>
        <translation>已选择 %1 行</translation>
    </message>
    <message>
        <source>Save all</source>
        <translation>全部保存</translation>
    </message>
    <message>
        <source>Save left as...</source>
        <translation>左侧另存为...</translation>
    </message>
    <message>
        <source>Save right as...</source>
        <translation>右侧另存为...</translation>
    </message>
    <message>
        <source>The left side has no unsaved changes</source>
        <translation>左侧没有未保存的更改</translation>
    </message>
    <message>
        <source>The right side has no unsaved changes</source>
        <translation>右侧没有未保存的更改</translation>
    </message>
    <message>
        <source>There are no unsaved changes</source>
        <translation>没有未保存的更改</translation>
    </message>
    <message>
        <source>Save &amp;as...</source>
        <translation>另存为(&amp;A)...</translation>
    </message>
    <message>
        <source>Editing enabled — click to lock text panes</source>
        <translation>已启用编辑 — 点击锁定文本窗格</translation>
    </message>
    <message>
        <source>Enable editing left and right text</source>
        <translation>启用左右文本编辑</translation>
    </message>
    <message>
        <source>Select lines or go to a difference first</source>
        <translation>请先选择行或转到一处差异</translation>
    </message>
    <message>
        <source>Copy this difference to the right side; unlocks the texts</source>
        <translation>将此差异复制到右侧，并解锁文本</translation>
    </message>
    <message>
        <source>Copy this difference to the left side; unlocks the texts</source>
        <translation>将此差异复制到左侧，并解锁文本</translation>
    </message>
    <message>
        <source>Show blanks and tabs</source>
        <translation>显示空格和制表符</translation>
    </message>
    <message>
        <source>Session settings</source>
        <translation>会话设置</translation>
    </message>
    <message>
        <source>What counts as a difference, formats, alignment and replacements</source>
        <translation>设置哪些内容算作差异，以及格式、对齐和替换</translation>
    </message>
    <message>
        <source>Restore unsaved changes</source>
        <translation>恢复未保存的更改</translation>
    </message>
    <message>
        <source>Unsaved changes of an earlier run cannot be restored, because what kept them is damaged. It was put aside:
%1</source>
        <translation>无法恢复上次运行时未保存的更改，因为保存它们的文件已损坏。该文件已移到：
%1</translation>
    </message>
    <message>
        <source>The program ended while there were unsaved changes:
%1

Restore them? The files themselves stay as they are until you save.</source>
        <translation>程序结束时有未保存的更改：
%1

要恢复吗？在您保存之前，文件本身不会改变。</translation>
    </message>
    <message>
        <source>&amp;Restore</source>
        <translation>恢复(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Discard</source>
        <translation>放弃(&amp;D)</translation>
    </message>
    <message>
        <source>Ask &amp;later</source>
        <translation>以后再问(&amp;L)</translation>
    </message>
    <message>
        <source>Tabs: %1 of %2</source>
        <translation>标签页：%1 / %2</translation>
    </message>
    <message>
        <source>Restored tabs</source>
        <translation>已恢复的标签页</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>The session &quot;%1&quot; leads to another machine. Open it?</source>
        <translation>会话“%1”会访问另一台计算机。要打开它吗？</translation>
    </message>
    <message>
        <source>The workspace &quot;%1&quot; leads to another machine. Open it?</source>
        <translation>工作区“%1”会访问另一台计算机。要打开它吗？</translation>
    </message>
    <message>
        <source>Comparing folders...</source>
        <translation>正在比较文件夹…</translation>
    </message>
    <message>
        <source>%1 copy: %2 -&gt; %3</source>
        <translation>%1 复制：%2 -&gt; %3</translation>
    </message>
    <message>
        <source>Cannot copy: %1</source>
        <translation>无法复制：%1</translation>
    </message>
    <message>
        <source>Cannot copy to: %1</source>
        <translation>无法复制到：%1</translation>
    </message>
    <message>
        <source>Copy failed</source>
        <translation>复制失败</translation>
    </message>
    <message>
        <source>%1 move: %2 -&gt; %3</source>
        <translation>%1 移动：%2 -&gt; %3</translation>
    </message>
    <message>
        <source>Cannot move: %1</source>
        <translation>无法移动：%1</translation>
    </message>
    <message>
        <source>Cannot move to: %1</source>
        <translation>无法移动到：%1</translation>
    </message>
    <message>
        <source>Move failed</source>
        <translation>移动失败</translation>
    </message>
    <message>
        <source>%1 delete: %2</source>
        <translation>%1 删除：%2</translation>
    </message>
    <message>
        <source>Cannot delete: %1</source>
        <translation>无法删除：%1</translation>
    </message>
    <message>
        <source>Delete failed</source>
        <translation>删除失败</translation>
    </message>
    <message>
        <source>%1 rename: %2 -&gt; %3</source>
        <translation>%1 重命名：%2 -&gt; %3</translation>
    </message>
    <message>
        <source>Cannot rename: %1</source>
        <translation>无法重命名：%1</translation>
    </message>
    <message>
        <source>Rename failed</source>
        <translation>重命名失败</translation>
    </message>
    <message>
        <source>%1 new folder: %2</source>
        <translation>%1 新建文件夹：%2</translation>
    </message>
    <message>
        <source>Cannot create: %1</source>
        <translation>无法创建：%1</translation>
    </message>
    <message>
        <source>New folder failed</source>
        <translation>新建文件夹失败</translation>
    </message>
    <message>
        <source>%1 mirror: %2 -&gt; %3</source>
        <translation>%1 镜像：%2 -&gt; %3</translation>
    </message>
    <message>
        <source>Mirror failed: %1 -&gt; %2</source>
        <translation>镜像失败：%1 -&gt; %2</translation>
    </message>
    <message>
        <source>Mirror sync failed</source>
        <translation>镜像同步失败</translation>
    </message>
    <message>
        <source>%1 update: %2 -&gt; %3</source>
        <translation>%1 更新：%2 -&gt; %3</translation>
    </message>
    <message>
        <source>Update failed: %1 -&gt; %2</source>
        <translation>更新失败：%1 -&gt; %2</translation>
    </message>
    <message>
        <source>Update sync failed</source>
        <translation>更新同步失败</translation>
    </message>
    <message>
        <source>%1 update both: %2 &lt;-&gt; %3</source>
        <translation>%1 双向更新：%2 &lt;-&gt; %3</translation>
    </message>
    <message>
        <source>Update both sides failed: %1 &lt;-&gt; %2</source>
        <translation>双向更新失败：%1 &lt;-&gt; %2</translation>
    </message>
    <message>
        <source>%1 undo: %2</source>
        <translation>%1 撤销：%2</translation>
    </message>
    <message>
        <source>Cannot undo: %1</source>
        <translation>无法撤销：%1</translation>
    </message>
    <message>
        <source>Undo failed</source>
        <translation>撤销失败</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>继续</translation>
    </message>
    <message>
        <source>%1 continue: %2</source>
        <translation>%1 继续：%2</translation>
    </message>
    <message>
        <source>Cannot continue: %1</source>
        <translation>无法继续：%1</translation>
    </message>
    <message>
        <source>Continuing failed</source>
        <translation>继续失败</translation>
    </message>
    <message>
        <source>Go on with &quot;%1&quot; of %2?</source>
        <translation>继续 %2 的“%1”？</translation>
    </message>
    <message>
        <source>&amp;Continue</source>
        <translation>继续(&amp;C)</translation>
    </message>
    <message>
        <source>not kept for undoing: %1</source>
        <translation>未保留、无法撤销的项目数：%1</translation>
    </message>
    <message>
        <source>There is nothing to do.</source>
        <translation>没有需要执行的操作。</translation>
    </message>
    <message>
        <source>Done: %1 succeeded, %2 failed</source>
        <translation>完成：成功 %1 项，失败 %2 项</translation>
    </message>
    <message>
        <source>Move</source>
        <translation>移动</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>重命名</translation>
    </message>
    <message>
        <source>New folder</source>
        <translation>新建文件夹</translation>
    </message>
    <message>
        <source>Mirror</source>
        <translation>镜像</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>更新</translation>
    </message>
    <message>
        <source>Update both sides</source>
        <translation>双向更新</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1：%2</translation>
    </message>
    <message>
        <source>%1 -&gt; %2</source>
        <translation>%1 -&gt; %2</translation>
    </message>
    <message>
        <source>%1 entries</source>
        <translation>%1 个项目</translation>
    </message>
    <message>
        <source>A file on one side is a folder on the other; delete one of them first</source>
        <translation>一侧是文件，另一侧是文件夹；请先删除其中之一</translation>
    </message>
    <message>
        <source>Hidden by a filter</source>
        <translation>被过滤器隐藏</translation>
    </message>
    <message>
        <source>The folder stays, since a filter hides something in it</source>
        <translation>文件夹被保留，因为其中有被过滤器隐藏的内容</translation>
    </message>
    <message>
        <source>The folder stays, since it holds something that is not listed</source>
        <translation>文件夹被保留，因为其中有未列出的内容</translation>
    </message>
    <message>
        <source>The side is read-only</source>
        <translation>此侧为只读</translation>
    </message>
    <message>
        <source>The files differ, and neither is newer</source>
        <translation>文件不同，但没有哪一个更新</translation>
    </message>
    <message>
        <source>Another selected entry has the same name</source>
        <translation>另一个所选项目同名</translation>
    </message>
    <message>
        <source>Something of this name is there already</source>
        <translation>已存在同名项目</translation>
    </message>
    <message>
        <source>A folder cannot go into itself</source>
        <translation>文件夹不能放入自身</translation>
    </message>
    <message>
        <source>It is reached through a link only</source>
        <translation>只能通过链接到达</translation>
    </message>
    <message>
        <source>It has changed since it was compared; refresh first</source>
        <translation>比较之后已发生变化；请先刷新</translation>
    </message>
    <message>
        <source>It cannot be read</source>
        <translation>无法读取</translation>
    </message>
    <message>
        <source>It is neither a file nor a folder nor a link</source>
        <translation>既不是文件，也不是文件夹或链接</translation>
    </message>
    <message>
        <source>The name is not allowed there</source>
        <translation>目标位置不允许此名称</translation>
    </message>
    <message>
        <source>What was there before has not been kept</source>
        <translation>原先的内容没有保留</translation>
    </message>
    <message>
        <source>It is not on this side</source>
        <translation>不在此侧</translation>
    </message>
    <message>
        <source>The folder %1 is no longer where it was: another one is there now.</source>
        <translation>文件夹 %1 已不在原处：那里现在是另一个文件夹。</translation>
    </message>
    <message>
        <source>The folder %1 is no longer where it was: %2.</source>
        <translation>文件夹 %1 已不在原处：%2。</translation>
    </message>
    <message>
        <source>The run has been stopped. Not done: %1</source>
        <translation>运行已停止。未执行：%1</translation>
    </message>
    <message>
        <source>It is no longer there</source>
        <translation>已不存在</translation>
    </message>
    <message>
        <source>It has changed meanwhile</source>
        <translation>期间已发生变化</translation>
    </message>
    <message>
        <source>The file to be replaced has changed meanwhile</source>
        <translation>要替换的文件期间已发生变化</translation>
    </message>
    <message>
        <source>Something of this name has appeared meanwhile</source>
        <translation>期间出现了同名项目</translation>
    </message>
    <message>
        <source>It is on the other side by now, or cannot be looked for there</source>
        <translation>另一侧已出现该项目，或无法在那里查找</translation>
    </message>
    <message>
        <source>It is no longer the same as the copy that was to go, which stays</source>
        <translation>它已与原定要删除的副本不同，该副本予以保留</translation>
    </message>
    <message>
        <source>A link stands where a folder was; links are not followed</source>
        <translation>原文件夹的位置现在是一个链接；不会跟随链接</translation>
    </message>
    <message>
        <source>The folder is not empty</source>
        <translation>文件夹不为空</translation>
    </message>
    <message>
        <source>Nothing is deleted in a folder in which something went wrong</source>
        <translation>出现问题的文件夹中不会删除任何内容</translation>
    </message>
    <message>
        <source>It cannot be written: protected, or in use by another program</source>
        <translation>无法写入：受保护，或正被其他程序使用</translation>
    </message>
    <message>
        <source>The disk is full</source>
        <translation>磁盘已满</translation>
    </message>
    <message>
        <source>The copy was not the same and has been removed</source>
        <translation>副本与原文件不同，已被移除</translation>
    </message>
    <message>
        <source>The old contents could not be kept for undoing; nothing was changed</source>
        <translation>无法保留旧内容以供撤销；未做任何更改</translation>
    </message>
    <message>
        <source>The journal of operations cannot be written; nothing was changed</source>
        <translation>无法写入操作日志；未做任何更改</translation>
    </message>
    <message>
        <source>There is no recycle bin for it</source>
        <translation>没有可用的回收站</translation>
    </message>
    <message>
        <source>Something went wrong in it, so %1 deletions have been left undone</source>
        <translation>其中发生了错误，因此有 %1 项删除未执行</translation>
    </message>
    <message>
        <source>The copy is in place, and the source could not be removed</source>
        <translation>副本已就位，但无法移除源文件</translation>
    </message>
    <message>
        <source>Done, but its time or permissions could not be kept</source>
        <translation>已完成，但无法保留时间或权限</translation>
    </message>
    <message>
        <source>Done, but the system could not confirm that it has reached the disk</source>
        <translation>已完成，但系统无法确认数据已写入磁盘</translation>
    </message>
    <message>
        <source>This cannot be done with such an entry</source>
        <translation>无法对此类项目执行该操作</translation>
    </message>
    <message>
        <source>Cancelled in the middle; what was begun has been taken back</source>
        <translation>中途取消；已开始的部分已还原</translation>
    </message>
    <message>
        <source>&lt;folder&gt;</source>
        <translation>&lt;文件夹&gt;</translation>
    </message>
    <message>
        <source>The side to be written is read-only.</source>
        <translation>要写入的一侧为只读。</translation>
    </message>
    <message>
        <source>The two folders are the same, or one lies in the other.</source>
        <translation>两个文件夹相同，或其中一个位于另一个之内。</translation>
    </message>
    <message>
        <source>A folder is missing or cannot be opened.</source>
        <translation>有文件夹不存在或无法打开。</translation>
    </message>
    <message>
        <source>The folder %1 is missing, cannot be opened, or is another one than it was.</source>
        <translation>文件夹 %1 不存在、无法打开，或者已不是原来的那个。</translation>
    </message>
    <message>
        <source>This name is not allowed.</source>
        <translation>不允许使用此名称。</translation>
    </message>
    <message>
        <source>This works on files in folders of this computer only.</source>
        <translation>此操作仅适用于本机文件夹中的文件。</translation>
    </message>
    <message>
        <source>New files: %1 (%2)</source>
        <translation>新文件：%1（%2）</translation>
    </message>
    <message>
        <source>Replaced: %1 (%2)</source>
        <translation>替换：%1（%2）</translation>
    </message>
    <message>
        <source>Deleted: %1 (%2)</source>
        <translation>删除：%1（%2）</translation>
    </message>
    <message>
        <source>New folders: %1</source>
        <translation>新文件夹：%1</translation>
    </message>
    <message>
        <source>Deleted folders: %1</source>
        <translation>删除文件夹：%1</translation>
    </message>
    <message>
        <source>Deleted although hidden or not listed: %1</source>
        <translation>一并删除的隐藏或未列出的条目：%1</translation>
    </message>
    <message>
        <source>Left side: %1</source>
        <translation>左侧：%1</translation>
    </message>
    <message>
        <source>Right side: %1</source>
        <translation>右侧：%1</translation>
    </message>
    <message>
        <source>%1 entries in %2</source>
        <translation>%2 中的 %1 个条目</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>复制(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Move</source>
        <translation>移动(&amp;M)</translation>
    </message>
    <message>
        <source>Advanced filters</source>
        <translation>高级过滤器</translation>
    </message>
    <message>
        <source>Clear filters</source>
        <translation>清除过滤器</translation>
    </message>
    <message>
        <source>File size range</source>
        <translation>文件大小范围</translation>
    </message>
    <message>
        <source>Min:</source>
        <translation>最小：</translation>
    </message>
    <message>
        <source>Max:</source>
        <translation>最大：</translation>
    </message>
    <message>
        <source>Modified date range</source>
        <translation>修改日期范围</translation>
    </message>
    <message>
        <source>From:</source>
        <translation>从：</translation>
    </message>
    <message>
        <source>To:</source>
        <translation>到：</translation>
    </message>
    <message>
        <source> KB</source>
        <translation> KB</translation>
    </message>
    <message>
        <source>Any</source>
        <translation>不限</translation>
    </message>
    <message>
        <source>Enable</source>
        <translation>启用</translation>
    </message>
    <message>
        <source>The smallest size is above the largest: no file would be shown</source>
        <translation>最小值大于最大值：将不显示任何文件</translation>
    </message>
    <message>
        <source>The first date is after the last: no file would be shown</source>
        <translation>起始日期晚于结束日期：将不显示任何文件</translation>
    </message>
    <message>
        <source>%1 filters updated: size[%2-%3 KB] date[%4 ~ %5]</source>
        <translation>%1 过滤器已更新：大小[%2-%3 KB] 日期[%4 ~ %5]</translation>
    </message>
    <message>
        <source>The left side is read-only</source>
        <translation>左侧为只读</translation>
    </message>
    <message>
        <source>The right side is read-only</source>
        <translation>右侧为只读</translation>
    </message>
    <message>
        <source>The left side shows a fixed state, which cannot be changed</source>
        <translation>左侧显示的是固定状态，无法更改</translation>
    </message>
    <message>
        <source>The right side shows a fixed state, which cannot be changed</source>
        <translation>右侧显示的是固定状态，无法更改</translation>
    </message>
    <message>
        <source>A snapshot holds no contents</source>
        <translation>快照不含文件内容</translation>
    </message>
    <message>
        <source>%1 is no snapshot. %2</source>
        <translation>%1 不是快照。%2</translation>
    </message>
    <message>
        <source>The snapshot has no such folder: %1</source>
        <translation>快照中没有此文件夹：%1</translation>
    </message>
    <message>
        <source>Choose both folders first</source>
        <translation>请先选择两个文件夹</translation>
    </message>
    <message>
        <source>Nothing is selected</source>
        <translation>未选择任何项目</translation>
    </message>
    <message>
        <source>The selection is not on this side</source>
        <translation>所选项目不在此侧</translation>
    </message>
    <message>
        <source>Select one entry only</source>
        <translation>请只选择一个项目</translation>
    </message>
    <message>
        <source>Nothing of the selection is on the left side</source>
        <translation>所选项目均不在左侧</translation>
    </message>
    <message>
        <source>Nothing of the selection is on the right side</source>
        <translation>所选项目均不在右侧</translation>
    </message>
    <message>
        <source>Show results dialog (&amp;D)</source>
        <translation>显示结果对话框 (&amp;D)</translation>
    </message>
    <message>
        <source>Compare contents</source>
        <translation>比较内容</translation>
    </message>
    <message>
        <source>Start (&amp;S)</source>
        <translation>开始 (&amp;S)</translation>
    </message>
    <message>
        <source>Selection:</source>
        <translation>所选内容：</translation>
    </message>
    <message>
        <source>Compare contents of the selected files and folders.</source>
        <translation>比较所选文件和文件夹的内容。</translation>
    </message>
    <message>
        <source>Operation:</source>
        <translation>操作：</translation>
    </message>
    <message>
        <source>Binary compare (&amp;N)</source>
        <translation>二进制比较 (&amp;N)</translation>
    </message>
    <message>
        <source>CRC compare</source>
        <translation>CRC 比较</translation>
    </message>
    <message>
        <source>Rules-based compare (&amp;U)</source>
        <translation>基于规则的比较 (&amp;U)</translation>
    </message>
    <message>
        <source>Counting...</source>
        <translation>正在统计...</translation>
    </message>
    <message>
        <source>not counted</source>
        <translation>未统计</translation>
    </message>
    <message>
        <source>Counting... %1</source>
        <translation>正在统计... %1</translation>
    </message>
    <message>
        <source>%1 files, %2 folders, %3</source>
        <translation>文件：%1，文件夹：%2，%3</translation>
    </message>
    <message>
        <source>The comparison was cancelled; not all files were compared.</source>
        <translation>比较已取消；并非所有文件都已比较。</translation>
    </message>
    <message>
        <source>Same:</source>
        <translation>相同：</translation>
    </message>
    <message>
        <source>Different:</source>
        <translation>不同：</translation>
    </message>
    <message>
        <source>On one side only:</source>
        <translation>仅一侧存在：</translation>
    </message>
    <message>
        <source>Different files:</source>
        <translation>不同的文件：</translation>
    </message>
    <message>
        <source>Files that could not be read:</source>
        <translation>无法读取的文件：</translation>
    </message>
    <message>
        <source>Not compared:</source>
        <translation>未比较：</translation>
    </message>
    <message>
        <source>A snapshot has neither the contents of these files nor their checksums; they stay as size and time show them.</source>
        <translation>快照既没有这些文件的内容，也没有它们的校验和；它们保持按大小和时间判定的结果。</translation>
    </message>
    <message>
        <source>Preparing... %1</source>
        <translation>正在准备... %1</translation>
    </message>
    <message>
        <source>%1 of %2 entries, %3 of %4</source>
        <translation>%1 / %2 项，%3 / %4</translation>
    </message>
    <message>
        <source>(about %1 left)</source>
        <translation>（约剩 %1）</translation>
    </message>
    <message>
        <source>Another command is running</source>
        <translation>另一个命令正在运行</translation>
    </message>
    <message>
        <source>No file manager could be started for %1</source>
        <translation>无法启动文件管理器以显示 %1</translation>
    </message>
    <message>
        <source>Select destination folder</source>
        <translation>选择目标文件夹</translation>
    </message>
    <message>
        <source>New name:</source>
        <translation>新名称：</translation>
    </message>
    <message>
        <source>Folder name:</source>
        <translation>文件夹名称：</translation>
    </message>
    <message>
        <source>Cancelled</source>
        <translation>已取消</translation>
    </message>
    <message>
        <source>Not enough memory</source>
        <translation>内存不足</translation>
    </message>
    <message>
        <source>There is nothing to undo</source>
        <translation>没有可撤销的操作</translation>
    </message>
    <message>
        <source>The journal of the last operation cannot be read.</source>
        <translation>无法读取上一次操作的日志。</translation>
    </message>
    <message>
        <source>A side that the last operation wrote to is read-only now</source>
        <translation>上一次操作写入的一侧现为只读</translation>
    </message>
    <message>
        <source>Undo &quot;%1&quot; of %2?</source>
        <translation>撤销 %2 的“%1”？</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>撤销(&amp;U)</translation>
    </message>
    <message>
        <source>Confirm update sync</source>
        <translation>确认更新同步</translation>
    </message>
    <message>
        <source>New and newer files are copied; nothing is removed.</source>
        <translation>复制新增和较新的文件；不移除任何内容。</translation>
    </message>
    <message>
        <source>&amp;Update</source>
        <translation>更新(&amp;U)</translation>
    </message>
    <message>
        <source>Confirm mirror sync</source>
        <translation>确认镜像同步</translation>
    </message>
    <message>
        <source>Mirror makes the destination identical to the source; extra items on the destination will be removed.</source>
        <translation>镜像会使目标与源完全一致；目标中多余的项目将被移除。</translation>
    </message>
    <message>
        <source>&amp;Mirror</source>
        <translation>镜像(&amp;M)</translation>
    </message>
    <message>
        <source>There is nothing on the source side (%1), so that everything on the destination side would be removed. Go on all the same?</source>
        <translation>源侧（%1）没有任何内容，因此目标侧的所有内容都将被移除。仍要继续吗？</translation>
    </message>
    <message>
        <source>Delete %1?</source>
        <translation>删除 %1？</translation>
    </message>
    <message>
        <source>&amp;Delete for good</source>
        <translation>永久删除(&amp;D)</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>删除(&amp;D)</translation>
    </message>
    <message>
        <source>It is deleted for good.</source>
        <translation>将被永久删除。</translation>
    </message>
    <message>
        <source>It is deleted for good. For undoing it is kept for up to %1 days, so that its space is not free before.</source>
        <translation>将被永久删除。为了可以撤销，内容最多保留 %1 天，在此之前不会释放空间。</translation>
    </message>
    <message>
        <source>It is deleted for good, and nothing is kept for undoing.</source>
        <translation>将被永久删除，且不保留任何可供撤销的内容。</translation>
    </message>
    <message>
        <source>&amp;Keep nothing for undoing</source>
        <translation>不保留可供撤销的内容(&amp;K)</translation>
    </message>
    <message>
        <source>The space is free at once, and nobody can bring the contents back.</source>
        <translation>立即释放空间，内容无法再恢复。</translation>
    </message>
    <message>
        <source>Delete and &amp;keep nothing</source>
        <translation>删除且不保留(&amp;K)</translation>
    </message>
    <message>
        <source>What undoing needs could not be written, perhaps because the disk is full, so some of it has not been done. Go on without it? It can then not be taken back.</source>
        <translation>无法写入撤销所需的内容，可能是磁盘已满，因此有一部分没有执行。仍要继续吗？之后将无法撤销。</translation>
    </message>
    <message>
        <source>It goes to the recycle bin.</source>
        <translation>将移到回收站。</translation>
    </message>
    <message>
        <source>A newer file will be replaced by an older one.</source>
        <translation>较新的文件将被较旧的文件替换。</translation>
    </message>
    <message>
        <source>A read-only file will be replaced.</source>
        <translation>将替换一个只读文件。</translation>
    </message>
    <message>
        <source>%1 files will be replaced.</source>
        <translation>将替换 %1 个文件。</translation>
    </message>
    <message>
        <source>&amp;Replace</source>
        <translation>替换(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Show list...</source>
        <translation>显示列表(&amp;S)...</translation>
    </message>
    <message>
        <source>Files of the same name in the destination folder: %1. Replace them?</source>
        <translation>目标文件夹中有 %1 个同名文件。要替换它们吗？</translation>
    </message>
    <message>
        <source>&amp;Skip them</source>
        <translation>跳过(&amp;S)</translation>
    </message>
    <message>
        <source>Cancelled. %1</source>
        <translation>已取消。%1</translation>
    </message>
    <message>
        <source>There is no recycle bin for some of the entries, so that they are still there. Delete them for good?</source>
        <translation>部分项目没有可用的回收站，因此仍然存在。要永久删除它们吗？</translation>
    </message>
    <message>
        <source>Manual alignment</source>
        <translation>手动对齐</translation>
    </message>
    <message>
        <source>%1  (%2)</source>
        <translation>%1  (%2)</translation>
    </message>
    <message>
        <source>Choose the item on the other side to align with:</source>
        <translation>选择要与之对齐的另一侧项目：</translation>
    </message>
    <message>
        <source>Select a left-only or right-only item, then pair it with an item unique on the other side.</source>
        <translation>请选择一个仅左侧或仅右侧存在的项目，再将其与另一侧独有的项目配对。</translation>
    </message>
    <message>
        <source>No unique items on the other side at this level to pair with.</source>
        <translation>另一侧的同一层级没有可配对的独有项目。</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Reason</source>
        <translation>原因</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>大小</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>详细信息</translation>
    </message>
    <message>
        <source>Moved: %1 (%2)</source>
        <translation>移动：%1（%2）</translation>
    </message>
    <message>
        <source>Left alone: %1</source>
        <translation>保持不变：%1</translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation>%1 字节</translation>
    </message>
    <message>
        <source>Path: %1
Type: %2
Size: %3
Modified: %4
Read-only: %5</source>
        <translation>路径：%1
类型：%2
大小：%3
修改时间：%4
只读：%5</translation>
    </message>
    <message>
        <source>Path: %1
In: %2</source>
        <translation>路径：%1
位于：%2</translation>
    </message>
    <message>
        <source>Type: %1
Size: %2
Modified: %3
Read-only: %4</source>
        <translation>类型：%1
大小：%2
修改时间：%3
只读：%4</translation>
    </message>
    <message>
        <source>the host %1</source>
        <translation>主机 %1</translation>
    </message>
    <message>
        <source>the state %1 of the repository %2</source>
        <translation>仓库 %2 的状态 %1</translation>
    </message>
    <message>
        <source>the snapshot %1 of %2</source>
        <translation>快照 %1（创建于 %2）</translation>
    </message>
    <message>
        <source>the snapshot %1</source>
        <translation>快照 %1</translation>
    </message>
    <message>
        <source>the archive %1</source>
        <translation>压缩包 %1</translation>
    </message>
    <message>
        <source>not known: Git keeps no times of files</source>
        <translation>未知：Git 不保存文件时间</translation>
    </message>
    <message>
        <source>not known</source>
        <translation>未知</translation>
    </message>
    <message>
        <source>No</source>
        <translation>否</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>是</translation>
    </message>
    <message>
        <source>Properties</source>
        <translation>属性</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>左侧</translation>
    </message>
    <message>
        <source>Right</source>
        <translation>右侧</translation>
    </message>
    <message>
        <source>Refresh</source>
        <translation>刷新</translation>
    </message>
    <message>
        <source>Reload folder listing</source>
        <translation>重新读取文件夹列表</translation>
    </message>
    <message>
        <source>Cancel the current comparison</source>
        <translation>取消当前比较</translation>
    </message>
    <message>
        <source>Swap left and right sides</source>
        <translation>交换左右两侧</translation>
    </message>
    <message>
        <source>Show all entries</source>
        <translation>显示全部条目</translation>
    </message>
    <message>
        <source>Diff</source>
        <translation>差异</translation>
    </message>
    <message>
        <source>Show entries that differ, and the folders around them</source>
        <translation>显示有差异的条目及其所在的文件夹</translation>
    </message>
    <message>
        <source>Same</source>
        <translation>相同</translation>
    </message>
    <message>
        <source>Show files that are the same</source>
        <translation>显示相同的文件</translation>
    </message>
    <message>
        <source>Expand</source>
        <translation>展开</translation>
    </message>
    <message>
        <source>Expand all subfolders</source>
        <translation>展开所有子文件夹</translation>
    </message>
    <message>
        <source>Collapse</source>
        <translation>折叠</translation>
    </message>
    <message>
        <source>Collapse all subfolders</source>
        <translation>折叠所有子文件夹</translation>
    </message>
    <message>
        <source>Copy selected items from left to right</source>
        <translation>将选中项从左侧复制到右侧</translation>
    </message>
    <message>
        <source>Copy selected items from right to left</source>
        <translation>将选中项从右侧复制到左侧</translation>
    </message>
    <message>
        <source>Move to folder...</source>
        <translation>移动到文件夹…</translation>
    </message>
    <message>
        <source>Copy to folder...</source>
        <translation>复制到文件夹…</translation>
    </message>
    <message>
        <source>This side is no folder of this computer: "Copy to folder..." copies out of it</source>
        <translation>这一侧不是本机的文件夹：用“复制到文件夹…”可从中复制</translation>
    </message>
    <message>
        <source>Delete...</source>
        <translation>删除…</translation>
    </message>
    <message>
        <source>Delete for good...</source>
        <translation>永久删除…</translation>
    </message>
    <message>
        <source>Rename...</source>
        <translation>重命名…</translation>
    </message>
    <message>
        <source>New folder...</source>
        <translation>新建文件夹…</translation>
    </message>
    <message>
        <source>Mirror to the right...</source>
        <translation>镜像到右侧…</translation>
    </message>
    <message>
        <source>Mirror to the left...</source>
        <translation>镜像到左侧…</translation>
    </message>
    <message>
        <source>Update the right side...</source>
        <translation>更新右侧…</translation>
    </message>
    <message>
        <source>Update the left side...</source>
        <translation>更新左侧…</translation>
    </message>
    <message>
        <source>Update both sides...</source>
        <translation>更新两侧…</translation>
    </message>
    <message>
        <source>Undo the last operation</source>
        <translation>撤销上一次操作</translation>
    </message>
    <message>
        <source>Show in file manager</source>
        <translation>在文件管理器中显示</translation>
    </message>
    <message>
        <source>Compare contents...</source>
        <translation>比较内容…</translation>
    </message>
    <message>
        <source>Align with other side</source>
        <translation>与另一侧对齐</translation>
    </message>
    <message>
        <source>Synchronise these folders</source>
        <translation>同步这两个文件夹</translation>
    </message>
    <message>
        <source>Size and date filters...</source>
        <translation>大小和日期过滤…</translation>
    </message>
    <message>
        <source>Filter by name</source>
        <translation>按名称过滤</translation>
    </message>
    <message>
        <source>Actions</source>
        <translation>操作</translation>
    </message>
    <message>
        <source>Compare actions</source>
        <translation>比较操作</translation>
    </message>
    <message>
        <source>Rules</source>
        <translation>规则</translation>
    </message>
    <message>
        <source>Session settings: rules, filters, handling</source>
        <translation>会话设置：规则、过滤、处理方式</translation>
    </message>
    <message>
        <source>Preset</source>
        <translation>预设</translation>
    </message>
    <message>
        <source>Built-in comparison presets</source>
        <translation>内置比较预设</translation>
    </message>
    <message>
        <source>Export</source>
        <translation>导出</translation>
    </message>
    <message>
        <source>Export diff report as HTML</source>
        <translation>将差异报告导出为 HTML</translation>
    </message>
    <message>
        <source>Filter bar</source>
        <translation>过滤栏</translation>
    </message>
    <message>
        <source>Show the filter bar</source>
        <translation>显示过滤栏</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>日志</translation>
    </message>
    <message>
        <source>Show the action log</source>
        <translation>显示操作日志</translation>
    </message>
    <message>
        <source>Color and symbol legend</source>
        <translation>颜色和符号图例</translation>
    </message>
    <message>
        <source>A folder and a file of the same name cannot be compared</source>
        <translation>同名的文件夹与文件无法比较</translation>
    </message>
    <message>
        <source>No further difference</source>
        <translation>后面没有更多差异</translation>
    </message>
    <message>
        <source>No earlier difference</source>
        <translation>前面没有更多差异</translation>
    </message>
    <message>
        <source>Open in a new tab</source>
        <translation>在新标签页中打开</translation>
    </message>
    <message>
        <source>Open as text</source>
        <translation>以文本方式打开</translation>
    </message>
    <message>
        <source>Open as hex</source>
        <translation>以十六进制方式打开</translation>
    </message>
    <message>
        <source>Exclude by name</source>
        <translation>按名称排除</translation>
    </message>
    <message>
        <source>Ignore by name</source>
        <translation>按名称忽略</translation>
    </message>
    <message>
        <source>Entries of this name are shown and count as no difference</source>
        <translation>显示此名称的条目，但不计为差异</translation>
    </message>
    <message>
        <source>Copy left path</source>
        <translation>复制左侧路径</translation>
    </message>
    <message>
        <source>Copy right path</source>
        <translation>复制右侧路径</translation>
    </message>
    <message>
        <source>Show excluded names again (%1)</source>
        <translation>重新显示已排除的名称（%1）</translation>
    </message>
    <message>
        <source>Select left folder</source>
        <translation>选择左侧文件夹</translation>
    </message>
    <message>
        <source>Select right folder</source>
        <translation>选择右侧文件夹</translation>
    </message>
    <message>
        <source>left</source>
        <translation>左侧</translation>
    </message>
    <message>
        <source>right</source>
        <translation>右侧</translation>
    </message>
    <message>
        <source>Wrote %1 side path: %2</source>
        <translation>已写入%1路径：%2</translation>
    </message>
    <message>
        <source>Both paths set; loading directories</source>
        <translation>两侧路径均已设置；正在加载目录</translation>
    </message>
    <message>
        <source>Select two folders to compare</source>
        <translation>请选择两个要比较的文件夹</translation>
    </message>
    <message>
        <source>Waiting for other side (only %1 set)</source>
        <translation>等待另一侧（仅设置了%1）</translation>
    </message>
    <message>
        <source>Only folders can be compared here; this is a file: %1</source>
        <translation>此处只能比较文件夹；这是一个文件：%1</translation>
    </message>
    <message>
        <source>%1 load dirs: %2 &lt;-&gt; %3</source>
        <translation>%1 加载目录：%2 &lt;-&gt; %3</translation>
    </message>
    <message>
        <source>Reading directories...</source>
        <translation>正在读取目录…</translation>
    </message>
    <message>
        <source>%1 tree mode: %2 items (folders %3, nested %4)</source>
        <translation>%1 树形模式：%2 项（文件夹 %3，嵌套 %4）</translation>
    </message>
    <message>
        <source>%1 compare cancelled</source>
        <translation>%1 比较已取消</translation>
    </message>
    <message>
        <source>%1; %2 could not be read</source>
        <translation>%1；%2 项无法读取</translation>
    </message>
    <message>
        <source>Cannot read folder: %1</source>
        <translation>无法读取文件夹：%1</translation>
    </message>
    <message>
        <source>Link to a folder that contains it, not followed: %1</source>
        <translation>链接指向包含它的文件夹，未跟随：%1</translation>
    </message>
    <message>
        <source>... and %1 more</source>
        <translation>… 以及另外 %1 项</translation>
    </message>
    <message>
        <source>Folder not found: %1</source>
        <translation>找不到文件夹：%1</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>重试</translation>
    </message>
    <message>
        <source>%1 navigate: %2 &lt;-&gt; %3</source>
        <translation>%1 进入：%2 &lt;-&gt; %3</translation>
    </message>
    <message>
        <source>There is no folder above both sides</source>
        <translation>两侧之上没有上级文件夹</translation>
    </message>
    <message>
        <source>%1 expand: %2 (%3 items)</source>
        <translation>%1 展开：%2（%3 项）</translation>
    </message>
    <message>
        <source>%1 expand all subfolders recursively</source>
        <translation>%1 递归展开所有子文件夹</translation>
    </message>
    <message>
        <source>Drop a folder on each side, or enter the two paths above.</source>
        <translation>将文件夹拖放到左右两侧，或在上方输入两个路径。</translation>
    </message>
    <message>
        <source>Drop a folder on the other side, or enter its path above.</source>
        <translation>将文件夹拖放到另一侧，或在上方输入其路径。</translation>
    </message>
    <message>
        <source>Both folders are empty.</source>
        <translation>两个文件夹都是空的。</translation>
    </message>
    <message>
        <source>Filters hide all %1 entries.</source>
        <translation>过滤器隐藏了全部 %1 个条目。</translation>
    </message>
    <message>
        <source>Session settings...</source>
        <translation>会话设置…</translation>
    </message>
    <message>
        <source>There are no differences.</source>
        <translation>没有差异。</translation>
    </message>
    <message>
        <source>Left out, as the name leads out of the tree: %1</source>
        <translation>已略过，其名称指向这棵树之外：%1</translation>
    </message>
    <message>
        <source>Left out, as no system can hold the name: %1</source>
        <translation>已略过，系统无法使用此名称：%1</translation>
    </message>
    <message>
        <source>Left out, in more than 200 folders within each other: %1</source>
        <translation>已略过，嵌套的文件夹超过 200 层：%1</translation>
    </message>
    <message>
        <source>Link left out, as it leads out of the tree: %1</source>
        <translation>已略过链接，它指向这棵树之外：%1</translation>
    </message>
    <message>
        <source>Hidden by a later entry of the same name: %1</source>
        <translation>被后面的同名条目取代：%1</translation>
    </message>
    <message>
        <source>Not unpacked, as it shares bytes of the archive with another entry: %1</source>
        <translation>未解压，它与其他条目共用压缩包中的字节：%1</translation>
    </message>
    <message>
        <source>Damaged: %1</source>
        <translation>已损坏：%1</translation>
    </message>
    <message>
        <source>The archive is damaged or cut off, and what comes next is not known: %1</source>
        <translation>压缩包已损坏或不完整，此后的内容未知：%1</translation>
    </message>
    <message>
        <source>Encrypted, and not read without the password: %1</source>
        <translation>已加密，没有密码无法读取：%1</translation>
    </message>
    <message>
        <source>There are more than 1,000,000 entries; the rest is left out: %1</source>
        <translation>条目超过 1,000,000 个，其余已略过：%1</translation>
    </message>
    <message>
        <source>Unpacking stopped at 4 GiB and 250 times the size of the archive: %1</source>
        <translation>解压已停止，达到 4 GiB 且为压缩包大小的 250 倍：%1</translation>
    </message>
    <message>
        <source>An archive within that stays a file, being damaged, one of too many or too deep: %1</source>
        <translation>内层压缩包保持为文件，因其已损坏、数量过多或层次过深：%1</translation>
    </message>
    <message>
        <source>An archive within that stays a file, as those within are opened up to 4 GiB in all: %1</source>
        <translation>内部的压缩包总共最多打开 4 GiB，此压缩包保持为文件：%1</translation>
    </message>
    <message>
        <source>Neither an archive nor a folder: %1</source>
        <translation>既不是压缩包也不是文件夹：%1</translation>
    </message>
    <message>
        <source>The library libarchive, which reads archives, is not installed: %1</source>
        <translation>未安装读取归档所需的 libarchive 库：%1</translation>
    </message>
    <message>
        <source>The password does not open the archive: %1</source>
        <translation>密码无法打开压缩包：%1</translation>
    </message>
    <message>
        <source>Encrypted in a way that cannot be read: %1</source>
        <translation>加密方式不受支持，无法读取：%1</translation>
    </message>
    <message>
        <source>What comes next is encrypted in a way that cannot be read, names as well: %1</source>
        <translation>其后的内容以无法读取的方式加密，名称也是如此：%1</translation>
    </message>
    <message>
        <source>All of the archive is encrypted, names as well, in a way that cannot be read: %1</source>
        <translation>整个压缩包（包括名称）均已加密，且加密方式不受支持：%1</translation>
    </message>
    <message>
        <source>Encrypted in a way that cannot be read</source>
        <translation>加密方式不受支持，无法读取</translation>
    </message>
    <message>
        <source>The archive is damaged or cut off, and nothing of it can be read: %1</source>
        <translation>压缩包已损坏或不完整，无法读取任何内容：%1</translation>
    </message>
    <message>
        <source>Archive:</source>
        <translation>压缩包：</translation>
    </message>
    <message>
        <source>Choose or drop an archive…</source>
        <translation>选择或拖入压缩包…</translation>
    </message>
    <message>
        <source>Select archive</source>
        <translation>选择压缩包</translation>
    </message>
    <message>
        <source>What is in the archive?</source>
        <translation>压缩包里有什么？</translation>
    </message>
    <message>
        <source>Choose an archive or drop one here: its entries are shown without unpacking it.</source>
        <translation>选择压缩包或将其拖到此处：无需解压即可查看其中的条目。</translation>
    </message>
    <message>
        <source>Choose an archive</source>
        <translation>请选择压缩包</translation>
    </message>
    <message>
        <source>This is a folder, not an archive</source>
        <translation>这是文件夹，不是压缩包</translation>
    </message>
    <message>
        <source>This is a snapshot of a folder, not an archive</source>
        <translation>这是文件夹的快照，不是压缩包</translation>
    </message>
    <message>
        <source>Opening the archive…</source>
        <translation>正在打开压缩包…</translation>
    </message>
    <message>
        <source>Read the archive, again where it is open</source>
        <translation>读取压缩包；已打开时重新读取</translation>
    </message>
    <message>
        <source>Extract…</source>
        <translation>提取…</translation>
    </message>
    <message>
        <source>Copy the selected entries into a folder, folders with all that is in them</source>
        <translation>将所选条目复制到文件夹，文件夹连同其全部内容</translation>
    </message>
    <message>
        <source>Extract all…</source>
        <translation>全部提取…</translation>
    </message>
    <message>
        <source>Copy all entries into a folder</source>
        <translation>将全部条目复制到文件夹</translation>
    </message>
    <message>
        <source>Test</source>
        <translation>测试</translation>
    </message>
    <message>
        <source>Read every entry to its end, and see whether its checksum holds</source>
        <translation>完整读取每个条目，并核对其校验和</translation>
    </message>
    <message>
        <source>Testing…</source>
        <translation>正在测试…</translation>
    </message>
    <message>
        <source>Files are still being extracted. Cancel that first.</source>
        <translation>仍在提取文件，请先取消。</translation>
    </message>
    <message>
        <source>Entries of the archive</source>
        <translation>压缩包的条目</translation>
    </message>
    <message>
        <source>Shows the entries whose names hold all of these words (Ctrl+F)</source>
        <translation>显示名称包含所有这些词的条目 (Ctrl+F)</translation>
    </message>
    <message>
        <source>What is missing or damaged</source>
        <translation>缺失或损坏的内容</translation>
    </message>
    <message>
        <source>Packed</source>
        <translation>压缩后</translation>
    </message>
    <message>
        <source>Ratio</source>
        <translation>压缩率</translation>
    </message>
    <message>
        <source>Method</source>
        <translation>压缩方法</translation>
    </message>
    <message>
        <source>Mode</source>
        <translation>权限</translation>
    </message>
    <message>
        <source>CRC-32; of formats that have none in their directory it is known after a test</source>
        <translation>CRC-32；目录中不含校验和的格式在测试后显示</translation>
    </message>
    <message>
        <source>Encrypted</source>
        <translation>已加密</translation>
    </message>
    <message>
        <source>Encrypted, and not read without the password</source>
        <translation>已加密，没有密码无法读取</translation>
    </message>
    <message>
        <source>Enter the password…</source>
        <translation>输入密码…</translation>
    </message>
    <message>
        <source>Open all folders</source>
        <translation>展开所有文件夹</translation>
    </message>
    <message>
        <source>Switch between the tree and the preview</source>
        <translation>在树与预览之间切换</translation>
    </message>
    <message>
        <source>Close all folders</source>
        <translation>折叠所有文件夹</translation>
    </message>
    <message>
        <source>Files: %1, folders: %2</source>
        <translation>文件：%1，文件夹：%2</translation>
    </message>
    <message>
        <source>%1 unpacked, %2 packed (%3)</source>
        <translation>解压后 %1，压缩后 %2（%3）</translation>
    </message>
    <message>
        <source>Files that cannot be read whole: %1 of %2</source>
        <translation>%2 个文件中有 %1 个无法完整读取</translation>
    </message>
    <message>
        <source>Stopped at the limit of what is unpacked; files read before it: %1</source>
        <translation>已达到解压上限而停止；此前的 %1 个文件均可读取</translation>
    </message>
    <message>
        <source>The archive is damaged or cut off; files that are left and can be read: %1</source>
        <translation>压缩包已损坏或不完整；剩余的 %1 个文件可以读取</translation>
    </message>
    <message>
        <source>All files can be read, and their checksums hold: %1 (%2)</source>
        <translation>全部 %1 个文件均可读取，且校验和正确 (%2)</translation>
    </message>
    <message>
        <source>%1, and %2 in archives within</source>
        <translation>%1，内部的压缩包中另有 %2</translation>
    </message>
    <message>
        <source>All files can be read; the format has no checksums: %1 (%2)</source>
        <translation>全部 %1 个文件均可读取；该格式没有校验和 (%2)</translation>
    </message>
    <message>
        <source>A pipe or device, which has no content</source>
        <translation>管道或设备，没有内容</translation>
    </message>
    <message>
        <source>A link to %1</source>
        <translation>指向 %1 的链接</translation>
    </message>
    <message>
        <source>The file is empty</source>
        <translation>文件为空</translation>
    </message>
    <message>
        <source>Damaged: nothing of it can be read</source>
        <translation>已损坏：无法读取任何内容</translation>
    </message>
    <message>
        <source>Damaged: nothing of it can be read (%1)</source>
        <translation>已损坏：无法读取任何内容（%1）</translation>
    </message>
    <message>
        <source>damaged; only the first %1 can be read</source>
        <translation>已损坏；仅前 %1 可读取</translation>
    </message>
    <message>
        <source>the first %1</source>
        <translation>前 %1</translation>
    </message>
    <message>
        <source>There is no such archive or folder: %1</source>
        <translation>没有这样的压缩包或文件夹：%1</translation>
    </message>
    <message>
        <source>%1 and %2 more</source>
        <translation>%1，另有 %2 项</translation>
    </message>
    <message>
        <source>Unpacking...</source>
        <translation>正在解压…</translation>
    </message>
    <message>
        <source>Unpacking was cancelled; nothing was written</source>
        <translation>已取消解压，未写入任何内容</translation>
    </message>
    <message>
        <source>Cannot unpack: %1</source>
        <translation>无法解压：%1</translation>
    </message>
    <message>
        <source>Archive compare ready: drag archives or folders to the left/right pane.</source>
        <translation>压缩包比较已就绪：可将压缩包或文件夹拖到左侧或右侧窗格。</translation>
    </message>
    <message>
        <source>Select two archives to compare, or an archive and a folder</source>
        <translation>请选择要比较的两个压缩包，或一个压缩包和一个文件夹</translation>
    </message>
    <message>
        <source>Drop an archive or a folder on each side, or enter the two paths above.</source>
        <translation>请在两侧各放入一个压缩包或文件夹，或在上方输入两个路径。</translation>
    </message>
    <message>
        <source>Drop an archive or a folder on the other side, or enter its path above.</source>
        <translation>请在另一侧放入一个压缩包或文件夹，或在上方输入其路径。</translation>
    </message>
    <message>
        <source>Select left archive</source>
        <translation>选择左侧压缩包</translation>
    </message>
    <message>
        <source>Select right archive</source>
        <translation>选择右侧压缩包</translation>
    </message>
    <message>
        <source>Opening the archives...</source>
        <translation>正在打开压缩包…</translation>
    </message>
    <message>
        <source>Not enough memory to open the archives</source>
        <translation>内存不足，无法打开压缩包</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>密码</translation>
    </message>
    <message>
        <source>The archive %1 is encrypted. Password:</source>
        <translation>压缩包 %1 已加密。密码：</translation>
    </message>
    <message>
        <source>Same bytes: the two archives are one and the same</source>
        <translation>字节相同：两个压缩包完全一样</translation>
    </message>
    <message>
        <source>Different names</source>
        <translation>名称不同</translation>
    </message>
    <message>
        <source>Same names, different contents</source>
        <translation>名称相同，内容不同</translation>
    </message>
    <message>
        <source>Same names</source>
        <translation>名称相同</translation>
    </message>
    <message>
        <source>Same contents: only order, times or packing differ</source>
        <translation>内容相同：只有顺序、时间或压缩方式不同</translation>
    </message>
    <message>
        <source>%1. %2</source>
        <translation>%1。%2</translation>
    </message>
    <message>
        <source>No file is the same on both sides.</source>
        <translation>没有两侧相同的文件。</translation>
    </message>
    <message>
        <source>%1 entries read</source>
        <translation>已读取 %1 个条目</translation>
    </message>
    <message>
        <source>%1 of %2 compared</source>
        <translation>已比较 %1 / %2</translation>
    </message>
    <message>
        <source>%1 selected</source>
        <translation>已选中 %1 项</translation>
    </message>
    <message>
        <source>Left folder path...</source>
        <translation>左侧文件夹路径…</translation>
    </message>
    <message>
        <source>Right folder path...</source>
        <translation>右侧文件夹路径…</translation>
    </message>
    <message>
        <source>Browse left folder</source>
        <translation>浏览左侧文件夹</translation>
    </message>
    <message>
        <source>Browse right folder</source>
        <translation>浏览右侧文件夹</translation>
    </message>
    <message>
        <source>Go up to the folders around (Backspace)</source>
        <translation>转到上级文件夹（Backspace）</translation>
    </message>
    <message>
        <source>This side is read-only</source>
        <translation>此侧为只读</translation>
    </message>
    <message>
        <source>Folder compare ready: drag folders from Explorer to the left/right pane.</source>
        <translation>文件夹比较已就绪：可从资源管理器将文件夹拖到左/右窗格。</translation>
    </message>
    <message>
        <source>%1 hidden by filters</source>
        <translation>%1 项被过滤器隐藏</translation>
    </message>
    <message>
        <source>Not enough memory to compare these folders</source>
        <translation>内存不足，无法比较这些文件夹</translation>
    </message>
    <message>
        <source>All files (* *)</source>
        <translation>所有文件 (* *)</translation>
    </message>
    <message>
        <source>C++ source (*.cpp;*.hpp;*.c;*.h;*.cc)</source>
        <translation>C++ 源代码 (*.cpp;*.hpp;*.c;*.h;*.cc)</translation>
    </message>
    <message>
        <source>Delphi source (*.pas;*.inc;*.dfm;*.nfm;*.xfm;*.dpr;*.dpk)</source>
        <translation>Delphi 源代码 (*.pas;*.inc;*.dfm;*.nfm;*.xfm;*.dpr;*.dpk)</translation>
    </message>
    <message>
        <source>HTML source (*.htm;*.html;*.xml;*.jpg;*.gif;*.png)</source>
        <translation>HTML 源文件 (*.htm;*.html;*.xml;*.jpg;*.gif;*.png)</translation>
    </message>
    <message>
        <source>Java source (*.java;*.ji;*.jit)</source>
        <translation>Java 源代码 (*.java;*.ji;*.jit)</translation>
    </message>
    <message>
        <source>File name filter; wildcards * and ?; separate patterns with semicolons</source>
        <translation>文件名过滤；可用通配符 * 和 ?；多个模式用分号分隔</translation>
    </message>
    <message>
        <source>Advanced...</source>
        <translation>高级…</translation>
    </message>
    <message>
        <source>Set size and date range filters</source>
        <translation>设置大小和日期范围过滤</translation>
    </message>
    <message>
        <source>Filter:</source>
        <translation>过滤：</translation>
    </message>
    <message>
        <source>size or date limits</source>
        <translation>大小或日期限制</translation>
    </message>
    <message>
        <source>%1 hidden</source>
        <translation>隐藏 %1 项</translation>
    </message>
    <message>
        <source>, </source>
        <translation>，</translation>
    </message>
    <message>
        <source>Action log</source>
        <translation>操作日志</translation>
    </message>
    <message>
        <source>Copy the log</source>
        <translation>复制日志</translation>
    </message>
    <message>
        <source>Save the log...</source>
        <translation>保存日志…</translation>
    </message>
    <message>
        <source>Hide the log</source>
        <translation>隐藏日志</translation>
    </message>
    <message>
        <source>Save the log</source>
        <translation>保存日志</translation>
    </message>
    <message>
        <source>Text files (*.txt)</source>
        <translation>文本文件 (*.txt)</translation>
    </message>
    <message>
        <source>Velmora — folder diff report</source>
        <translation>Velmora — 文件夹差异报告</translation>
    </message>
    <message>
        <source>Velmora folder diff report</source>
        <translation>Velmora 文件夹差异报告</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>状态</translation>
    </message>
    <message>
        <source>Left size</source>
        <translation>左侧大小</translation>
    </message>
    <message>
        <source>Right size</source>
        <translation>右侧大小</translation>
    </message>
    <message>
        <source>Left modified</source>
        <translation>左侧修改时间</translation>
    </message>
    <message>
        <source>Right modified</source>
        <translation>右侧修改时间</translation>
    </message>
    <message>
        <source>Left only</source>
        <translation>仅左侧</translation>
    </message>
    <message>
        <source>Right only</source>
        <translation>仅右侧</translation>
    </message>
    <message>
        <source>Different</source>
        <translation>不同</translation>
    </message>
    <message>
        <source>Total: %1 items | Same: %2 | Different: %3 | Left only: %4 | Right only: %5</source>
        <translation>共 %1 项 | 相同：%2 | 不同：%3 | 仅左侧：%4 | 仅右侧：%5</translation>
    </message>
    <message>
        <source>newer or different files</source>
        <translation>较新或不同的文件</translation>
    </message>
    <message>
        <source>older files</source>
        <translation>较旧的文件</translation>
    </message>
    <message>
        <source>unique files</source>
        <translation>单侧独有的文件</translation>
    </message>
    <message>
        <source>files not compared yet</source>
        <translation>尚未比较的文件</translation>
    </message>
    <message>
        <source>contains %1</source>
        <translation>包含%1</translation>
    </message>
    <message>
        <source>Not compared yet</source>
        <translation>尚未比较</translation>
    </message>
    <message>
        <source>Being compared</source>
        <translation>正在比较</translation>
    </message>
    <message>
        <source>All that is in it is on the left only</source>
        <translation>其中的内容都只在左侧</translation>
    </message>
    <message>
        <source>All that is in it is on the right only</source>
        <translation>其中的内容都只在右侧</translation>
    </message>
    <message>
        <source>Different: left %1; right %2</source>
        <translation>不同：左侧%1；右侧%2</translation>
    </message>
    <message>
        <source>Different; the right one is newer</source>
        <translation>不同；右侧较新</translation>
    </message>
    <message>
        <source>Different; the left one is newer</source>
        <translation>不同；左侧较新</translation>
    </message>
    <message>
        <source>Could not be read, or not to its end</source>
        <translation>无法读取，或无法完整读取</translation>
    </message>
    <message>
        <source>Ignored: counts as no difference</source>
        <translation>已忽略：不计为差异</translation>
    </message>
    <message>
        <source>Size: %1 bytes</source>
        <translation>大小：%1 字节</translation>
    </message>
    <message>
        <source>Modified: %1</source>
        <translation>修改时间：%1</translation>
    </message>
    <message>
        <source>Modified</source>
        <translation>修改时间</translation>
    </message>
    <message>
        <source>Same: %1</source>
        <translation>相同：%1</translation>
    </message>
    <message>
        <source>of these not read: %1</source>
        <translation>其中未读取：%1</translation>
    </message>
    <message>
        <source>not read</source>
        <translation>未读取</translation>
    </message>
    <message>
        <source>Of the same files these were not read: %1</source>
        <translation>相同的文件中未读取：%1</translation>
    </message>
    <message>
        <source>Read them</source>
        <translation>读取它们</translation>
    </message>
    <message>
        <source>Read the files that are the same by size and time alone</source>
        <translation>读取仅按大小和时间判断为相同的文件</translation>
    </message>
    <message>
        <source>Same size and time, not read</source>
        <translation>大小和时间相同，未读取</translation>
    </message>
    <message>
        <source>Same size, not read</source>
        <translation>大小相同，未读取</translation>
    </message>
    <message>
        <source>Contains files of the same size and time that were not read</source>
        <translation>含有大小和时间相同但未读取的文件</translation>
    </message>
    <message>
        <source>%1; %2 of the same size and time not read</source>
        <translation>%1；%2 个文件大小和时间相同但未读取</translation>
    </message>
    <message>
        <source>%1; %2 of the same size not read</source>
        <translation>%1；%2 个大小相同但未读取</translation>
    </message>
    <message>
        <source>Reading files of the same size and time...</source>
        <translation>正在读取大小和时间相同的文件...</translation>
    </message>
    <message>
        <source>%1 read files of the same size and time: %2</source>
        <translation>%1 读取大小和时间相同的文件：%2</translation>
    </message>
    <message>
        <source>Signs between the two sides</source>
        <translation>两侧之间的符号</translation>
    </message>
    <message>
        <source>The newer side of two files that differ</source>
        <translation>两个不同文件中较新的一侧</translation>
    </message>
    <message>
        <source>Different: %1</source>
        <translation>不同：%1</translation>
    </message>
    <message>
        <source>Left only: %1</source>
        <translation>仅左侧：%1</translation>
    </message>
    <message>
        <source>Right only: %1</source>
        <translation>仅右侧：%1</translation>
    </message>
    <message>
        <source>Not compared: %1</source>
        <translation>未比较：%1</translation>
    </message>
    <message>
        <source>Hidden: %1</source>
        <translation>隐藏：%1</translation>
    </message>
    <message>
        <source>Noise: %1</source>
        <translation>噪声：%1</translation>
    </message>
    <message>
        <source>Files that are shown, and entries that filters hide</source>
        <translation>显示的文件数，以及被过滤器隐藏的条目数</translation>
    </message>
    <message>
        <source>Left folder</source>
        <translation>左侧文件夹</translation>
    </message>
    <message>
        <source>Right folder</source>
        <translation>右侧文件夹</translation>
    </message>
    <message>
        <source>Treat as equal</source>
        <translation>视为相同</translation>
    </message>
    <message>
        <source>Hide this remark</source>
        <translation>隐藏此提示</translation>
    </message>
    <message>
        <source>%1 files differ only by exactly 1 hour in their times</source>
        <translation>%1 个文件仅修改时间正好相差 1 小时</translation>
    </message>
    <message>
        <source>%1 files differ only by up to 2 seconds in their times</source>
        <translation>%1 个文件仅修改时间相差不超过 2 秒</translation>
    </message>
    <message>
        <source>Sets the time tolerance of this session to %1 seconds: files of equal size whose times are that close count as equal without being read</source>
        <translation>将本会话的时间容差设为 %1 秒：大小相同且时间相差在此范围内的文件不再读取内容，直接视为相同</translation>
    </message>
    <message>
        <source>Files of equal size and modification time are the same without being read. Of other files of equal size the content decides.</source>
        <translation>大小和修改时间都相等的文件视为相同，不再读取；其他大小相等的文件由内容决定。</translation>
    </message>
    <message>
        <source>Both files are read whole, and their CRC-32 checksums decide. Times do not count.</source>
        <translation>完整读取两个文件，由它们的 CRC-32 校验和决定；不考虑时间。</translation>
    </message>
    <message>
        <source>Files of equal size are read and compared block by block. Times do not count.</source>
        <translation>读取大小相等的文件并逐块比较；不考虑时间。</translation>
    </message>
    <message>
        <source>Modified date and size (D)</source>
        <translation>修改日期和大小 (D)</translation>
    </message>
    <message>
        <source>CRC compare (C)</source>
        <translation>CRC 比较 (C)</translation>
    </message>
    <message>
        <source>Binary compare (N)</source>
        <translation>二进制比较 (N)</translation>
    </message>
    <message>
        <source> sec</source>
        <translation> 秒</translation>
    </message>
    <message>
        <source>Treat modification times within this range as equal</source>
        <translation>将此范围内的修改时间视为相等</translation>
    </message>
    <message>
        <source>Compare basis (&amp;B):</source>
        <translation>比较依据 (&amp;B)：</translation>
    </message>
    <message>
        <source>Time tolerance (&amp;T):</source>
        <translation>时间容差 (&amp;T)：</translation>
    </message>
    <message>
        <source>Mask</source>
        <translation>掩码</translation>
    </message>
    <message>
        <source>%1  &lt;-&gt;  %2</source>
        <translation>%1  &lt;-&gt;  %2</translation>
    </message>
    <message>
        <source>Add an alignment override</source>
        <translation>添加对齐覆盖规则</translation>
    </message>
    <message>
        <source>Edit the selected alignment override</source>
        <translation>编辑所选的对齐覆盖规则</translation>
    </message>
    <message>
        <source>Remove the selected alignment override</source>
        <translation>移除所选的对齐覆盖规则</translation>
    </message>
    <message>
        <source>Alignment overrides (&amp;G):</source>
        <translation>对齐覆盖规则 (&amp;G)：</translation>
    </message>
    <message>
        <source>Each override pairs the names of a folder that match its left mask with the names that match its right one, in alphabetical order. &quot;*&quot; is any run of characters, &quot;?&quot; any one.</source>
        <translation>每条规则将文件夹中匹配左侧掩码的名称与匹配右侧掩码的名称按字母顺序配对。“*”代表任意多个字符，“?”代表任意一个字符。</translation>
    </message>
    <message>
        <source>Left file mask:</source>
        <translation>左侧文件掩码：</translation>
    </message>
    <message>
        <source>Right file mask:</source>
        <translation>右侧文件掩码：</translation>
    </message>
    <message>
        <source>Alignment override</source>
        <translation>对齐覆盖规则</translation>
    </message>
    <message>
        <source>Show action log panel (&amp;L)</source>
        <translation>显示操作日志面板 (&amp;L)</translation>
    </message>
    <message>
        <source>Show filter bar (&amp;F)</source>
        <translation>显示过滤栏 (&amp;F)</translation>
    </message>
    <message>
        <source> MB</source>
        <translation> MB</translation>
    </message>
    <message>
        <source>Nothing</source>
        <translation>不保留</translation>
    </message>
    <message>
        <source> days</source>
        <translation> 天</translation>
    </message>
    <message>
        <source>Files that a command replaces or deletes are kept, so that the command can be undone; the oldest go first. This holds for all folder comparisons.</source>
        <translation>被命令替换或删除的文件会保留下来，以便撤销；最旧的最先清除。此设置适用于所有文件夹比较。</translation>
    </message>
    <message>
        <source>Kept copies</source>
        <translation>保留的副本</translation>
    </message>
    <message>
        <source>Keep at most (&amp;K):</source>
        <translation>最多保留 (&amp;K)：</translation>
    </message>
    <message>
        <source>For at most (&amp;A):</source>
        <translation>最长保留 (&amp;A)：</translation>
    </message>
    <message>
        <source>all</source>
        <translation>全部</translation>
    </message>
    <message>
        <source>none</source>
        <translation>无</translation>
    </message>
    <message>
        <source>Include files (&amp;I):</source>
        <translation>包含文件 (&amp;I)：</translation>
    </message>
    <message>
        <source>Exclude files (&amp;L):</source>
        <translation>排除文件 (&amp;L)：</translation>
    </message>
    <message>
        <source>Include folders (&amp;O):</source>
        <translation>包含文件夹 (&amp;O)：</translation>
    </message>
    <message>
        <source>Exclude folders (&amp;E):</source>
        <translation>排除文件夹 (&amp;E)：</translation>
    </message>
    <message>
        <source>Clear (&amp;C)</source>
        <translation>清除 (&amp;C)</translation>
    </message>
    <message>
        <source>Clear all filter lists (no restrictions)</source>
        <translation>清除所有过滤列表（无限制）</translation>
    </message>
    <message>
        <source>Wildcard masks (semicolon-separated):</source>
        <translation>通配符掩码（以分号分隔）：</translation>
    </message>
    <message>
        <source>Exclude protected OS files (recommended) (&amp;Y)</source>
        <translation>排除受保护的操作系统文件（推荐）(&amp;Y)</translation>
    </message>
    <message>
        <source>Files that carry the system attribute are not shown</source>
        <translation>不显示带有系统属性的文件</translation>
    </message>
    <message>
        <source>Show hidden files and folders (&amp;H)</source>
        <translation>显示隐藏的文件和文件夹(&amp;H)</translation>
    </message>
    <message>
        <source>Hidden entries are compared, copied and deleted like all others</source>
        <translation>隐藏条目与其他条目一样参与比较、复制和删除</translation>
    </message>
    <message>
        <source>Files whose name matches the mask are not shown (Ins)</source>
        <translation>不显示名称匹配掩码的文件 (Ins)</translation>
    </message>
    <message>
        <source>Edit the selected exclusion rule (F2)</source>
        <translation>编辑所选的排除规则 (F2)</translation>
    </message>
    <message>
        <source>Delete selected rules</source>
        <translation>删除所选规则</translation>
    </message>
    <message>
        <source>Add exclusion rule</source>
        <translation>添加排除规则</translation>
    </message>
    <message>
        <source>Exclusion rules (&amp;X):</source>
        <translation>排除规则 (&amp;X)：</translation>
    </message>
    <message>
        <source>While any format is checked, only files of checked formats are shown, beside those that the include masks name</source>
        <translation>勾选任一格式后，除包含掩码所列文件外，只显示所勾选格式的文件</translation>
    </message>
    <message>
        <source>Enabled file formats (&amp;F):</source>
        <translation>启用的文件格式 (&amp;F)：</translation>
    </message>
    <message>
        <source>File mask:</source>
        <translation>文件掩码：</translation>
    </message>
    <message>
        <source>Exclusion rule</source>
        <translation>排除规则</translation>
    </message>
    <message>
        <source>Only for this view</source>
        <translation>仅用于此视图</translation>
    </message>
    <message>
        <source>Session settings — folder compare</source>
        <translation>会话设置 — 文件夹比较</translation>
    </message>
    <message>
        <source>Spec</source>
        <translation>规格</translation>
    </message>
    <message>
        <source>Handling</source>
        <translation>处理</translation>
    </message>
    <message>
        <source>Name filters</source>
        <translation>名称过滤</translation>
    </message>
    <message>
        <source>Other filters</source>
        <translation>其他过滤</translation>
    </message>
    <message>
        <source>Misc</source>
        <translation>杂项</translation>
    </message>
    <message>
        <source>Apply comparison preset…</source>
        <translation>应用比较预设…</translation>
    </message>
    <message>
        <source>Load a built-in folder compare preset</source>
        <translation>加载内置的文件夹比较预设</translation>
    </message>
    <message>
        <source>Add to preset (&amp;P)...</source>
        <translation>添加到预设 (&amp;P)...</translation>
    </message>
    <message>
        <source>Store the settings of all tabs under a name</source>
        <translation>以某个名称保存所有选项卡的设置</translation>
    </message>
    <message>
        <source>Default settings</source>
        <translation>默认设置</translation>
    </message>
    <message>
        <source>Delete preset</source>
        <translation>删除预设</translation>
    </message>
    <message>
        <source>Add to preset</source>
        <translation>添加到预设</translation>
    </message>
    <message>
        <source>Preset name:</source>
        <translation>预设名称：</translation>
    </message>
    <message>
        <source>There is a preset &quot;%1&quot;. Replace it?</source>
        <translation>已存在预设“%1”。要替换它吗？</translation>
    </message>
    <message>
        <source>Delete the preset &quot;%1&quot;?</source>
        <translation>要删除预设“%1”吗？</translation>
    </message>
    <message>
        <source>Last modified: %1</source>
        <translation>上次修改：%1</translation>
    </message>
    <message>
        <source>Left side is read-only (&amp;1)</source>
        <translation>左侧只读 (&amp;1)</translation>
    </message>
    <message>
        <source>Right side is read-only (&amp;2)</source>
        <translation>右侧只读 (&amp;2)</translation>
    </message>
    <message>
        <source>Commands that would write to the left folder are switched off</source>
        <translation>会写入左侧文件夹的命令将被禁用</translation>
    </message>
    <message>
        <source>Commands that would write to the right folder are switched off</source>
        <translation>会写入右侧文件夹的命令将被禁用</translation>
    </message>
    <message>
        <source>What these settings are for</source>
        <translation>这些设置的用途</translation>
    </message>
    <message>
        <source>Left folder:</source>
        <translation>左侧文件夹：</translation>
    </message>
    <message>
        <source>Right folder:</source>
        <translation>右侧文件夹：</translation>
    </message>
    <message>
        <source>&amp;Description, kept with defaults and presets:</source>
        <translation>说明，随默认设置和预设保存(&amp;D)：</translation>
    </message>
    <message>
        <source>not chosen yet</source>
        <translation>尚未选择</translation>
    </message>
    <message>
        <source>&quot;%1&quot; contains a separator of folders: masks are compared with bare names</source>
        <translation>“%1”含有路径分隔符：掩码只与不带路径的名称比较</translation>
    </message>
    <message>
        <source>&quot;%1&quot; opens a list &quot;[&quot; and does not close it</source>
        <translation>“%1”中的“[”没有对应的“]”</translation>
    </message>
    <message>
        <source>Not enough memory to copy the differences</source>
        <translation>内存不足，无法复制差异</translation>
    </message>
    <message>
        <source>There is no difference to copy</source>
        <translation>没有可复制的差异</translation>
    </message>
    <message>
        <source>Copied as unified diff: %1 changed places</source>
        <translation>已复制为统一差异格式：%1 处更改</translation>
    </message>
    <message>
        <source>Ignore unimportant differences</source>
        <translation>忽略不重要的差异</translation>
    </message>
    <message>
        <source>Treat lines with unimportant differences as equal: pass over them and do not count them</source>
        <translation>将只有不重要差异的行视为相同：跳转时略过，也不计数</translation>
    </message>
    <message>
        <source>Wrap long lines</source>
        <translation>自动换行</translation>
    </message>
    <message>
        <source>Wrap long lines at the edge of the texts</source>
        <translation>在文本边缘将长行折行显示</translation>
    </message>
    <message>
        <source>Lines of more than %1 bytes are not wrapped: they are scrolled sideways</source>
        <translation>超过 %1 字节的行不换行，可横向滚动</translation>
    </message>
    <message>
        <source>Align with...</source>
        <translation>对齐到...</translation>
    </message>
    <message>
        <source>Choose a line on each side, which are compared with each other from then on</source>
        <translation>在两侧各选择一行，此后这两行相互比较</translation>
    </message>
    <message>
        <source>Undo this alignment</source>
        <translation>撤销此对齐</translation>
    </message>
    <message>
        <source>Undo all alignments</source>
        <translation>撤销所有对齐</translation>
    </message>
    <message>
        <source>There is no line here that could be aligned</source>
        <translation>此处没有可对齐的行</translation>
    </message>
    <message>
        <source>Left line %1 is chosen: now choose a line on the right in the same way (Esc gives up)</source>
        <translation>已选择左侧第 %1 行：请以同样方式选择右侧的一行（Esc 放弃）</translation>
    </message>
    <message>
        <source>Right line %1 is chosen: now choose a line on the left in the same way (Esc gives up)</source>
        <translation>已选择右侧第 %1 行：请以同样方式选择左侧的一行（Esc 放弃）</translation>
    </message>
    <message>
        <source>No line is chosen any more</source>
        <translation>已取消选择的行</translation>
    </message>
    <message>
        <source>This line is not aligned by hand</source>
        <translation>此行没有手动对齐</translation>
    </message>
    <message>
        <source>Align with left line %1</source>
        <translation>与左侧第 %1 行对齐</translation>
    </message>
    <message>
        <source>Align with right line %1</source>
        <translation>与右侧第 %1 行对齐</translation>
    </message>
    <message>
        <source>Syntax colours</source>
        <translation>语法着色</translation>
    </message>
    <message>
        <source>Copy as unified diff</source>
        <translation>复制为统一差异格式</translation>
    </message>
    <message>
        <source>Copy the differences of the selected lines, or all, as a unified diff</source>
        <translation>将所选行的差异（未选择时为全部差异）复制为统一差异格式</translation>
    </message>
    <message>
        <source>Equal lines around differences</source>
        <translation>差异前后保留的相同行数</translation>
    </message>
    <message>
        <source>Unsaved changes cannot be kept for a restart: %1</source>
        <translation>无法为重新启动保留未保存的更改：%1</translation>
    </message>
    <message>
        <source>Saving %1...</source>
        <translation>正在保存 %1...</translation>
    </message>
    <message>
        <source>This file is no longer there:
%1

Write it anew?</source>
        <translation>此文件已不存在：
%1

要重新写入吗？</translation>
    </message>
    <message>
        <source>The left side has unsaved changes:
%1

Save them?</source>
        <translation>左侧有未保存的更改：
%1

要保存吗？</translation>
    </message>
    <message>
        <source>The right side has unsaved changes:
%1

Save them?</source>
        <translation>右侧有未保存的更改：
%1

要保存吗？</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>保存(&amp;S)</translation>
    </message>
    <message>
        <source>%1 equal lines are folded here; press Enter to show them</source>
        <translation>此处折叠了 %1 行相同内容；按 Enter 键展开</translation>
    </message>
    <message>
        <source>⋯ %1 equal lines</source>
        <translation>⋯ %1 行相同</translation>
    </message>
    <message>
        <source>Find a session type or a recent session</source>
        <translation>查找会话类型或最近会话</translation>
    </message>
    <message>
        <source>Takes files, not folders</source>
        <translation>只接受文件，不接受文件夹</translation>
    </message>
    <message>
        <source>Takes %1 of the %2</source>
        <translation>只取 %2 个中的 %1 个</translation>
    </message>
    <message>
        <source>On this system: entries for Dolphin, Nautilus, Nemo and PCManFM, an entry in the menu of applications, and the file types of sessions and workspaces, all kept below %1.</source>
        <translation>在此系统上：Dolphin、Nautilus、Nemo 和 PCManFM 的菜单项、应用程序菜单中的条目，以及会话和工作区的文件类型，全部保存在 %1 之下。</translation>
    </message>
    <message>
        <source>What you compare is remembered: it will be here, and in the panel on the left.</source>
        <translation>比较过的内容会被记住：显示在这里以及左侧面板中。</translation>
    </message>
    <message>
        <source>No recent session has all of these words.</source>
        <translation>没有包含所有这些词的最近会话。</translation>
    </message>
    <message>
        <source>CRC</source>
        <translation>CRC</translation>
    </message>
    <message>
        <source>rules</source>
        <translation>规则</translation>
    </message>
    <message>
        <source>Comparing contents (%1)...</source>
        <translation>正在比较内容（%1）…</translation>
    </message>
    <message>
        <source>%1 content compare (%2): %3 &lt;-&gt; %4</source>
        <translation>%1 内容比较（%2）：%3 &lt;-&gt; %4</translation>
    </message>
    <message>
        <source>Contents compared: %1 same, %2 different</source>
        <translation>内容已比较：%1 个相同，%2 个不同</translation>
    </message>
    <message>
        <source>%1; %2 not compared: the snapshot has no checksums of them</source>
        <translation>%1；%2 个未比较：快照没有它们的校验和</translation>
    </message>
    <message>
        <source>%1 manual align: %2 &lt;-&gt; %3</source>
        <translation>%1 手动对齐：%2 &lt;-&gt; %3</translation>
    </message>
    <message>
        <source>too slow an expression for %1 lines</source>
        <translation>表达式对 %1 行过慢</translation>
    </message>
    <message>
        <source>An expression of the unimportant text is too slow for %1 lines, which count as important</source>
        <translation>不重要文本中的某个表达式对 %1 行过慢，这些行按重要处理</translation>
    </message>
    <message>
        <source>Too slow and left out of this comparison, unimportant text: %1</source>
        <translation>不重要文本中过慢的表达式，本次比较不再使用：%1</translation>
    </message>
    <message>
        <source>The left side has unsaved changes. Discard them?</source>
        <translation>左侧有未保存的更改。要放弃吗？</translation>
    </message>
    <message>
        <source>The right side has unsaved changes. Discard them?</source>
        <translation>右侧有未保存的更改。要放弃吗？</translation>
    </message>
    <message>
        <source>no line on the left</source>
        <translation>左侧无对应行</translation>
    </message>
    <message>
        <source>no line on the right</source>
        <translation>右侧无对应行</translation>
    </message>
    <message>
        <source>left line %1</source>
        <translation>左侧第 %1 行</translation>
    </message>
    <message>
        <source>right line %1</source>
        <translation>右侧第 %1 行</translation>
    </message>
    <message>
        <source>left lines %1 to %2</source>
        <translation>左侧第 %1 至 %2 行</translation>
    </message>
    <message>
        <source>right lines %1 to %2</source>
        <translation>右侧第 %1 至 %2 行</translation>
    </message>
    <message>
        <source>Difference block %1 of %2, %3: %4, %5</source>
        <translation>第 %1 处差异（共 %2 处），%3：%4，%5</translation>
    </message>
    <message>
        <source>with everything in it from %1 to the recycle bin</source>
        <translation>连同全部内容从 %1 移到回收站</translation>
    </message>
    <message>
        <source>from %1 to the recycle bin</source>
        <translation>从 %1 移到回收站</translation>
    </message>
    <message>
        <source>for good from %1</source>
        <translation>从 %1 永久删除</translation>
    </message>
    <message>
        <source>from the recycle bin to %1</source>
        <translation>从回收站恢复到 %1</translation>
    </message>
    <message>
        <source>to %1</source>
        <translation>到 %1</translation>
    </message>
    <message>
        <source>from %1 to %2</source>
        <translation>从 %1 到 %2</translation>
    </message>
    <message>
        <source>in %1</source>
        <translation>在 %1 中</translation>
    </message>
    <message>
        <source>the old contents, to %1</source>
        <translation>旧内容，恢复到 %1</translation>
    </message>
    <message>
        <source>to %1, over a read-only file</source>
        <translation>到 %1，替换只读文件</translation>
    </message>
    <message>
        <source>A file will be replaced, and its old contents will not be kept for undoing.</source>
        <translation>文件将被替换，且不会保留旧内容以供撤销。</translation>
    </message>
    <message>
        <source>Cut</source>
        <translation>剪切</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>粘贴</translation>
    </message>
    <message>
        <source>The selection reaches over lines that are not shown: show all lines first</source>
        <translation>所选内容包含未显示的行：请先显示全部行</translation>
    </message>
    <message>
        <source>Comparison preset</source>
        <translation>比较预设</translation>
    </message>
    <message>
        <source>Move to the right</source>
        <translation>移到右侧</translation>
    </message>
    <message>
        <source>Move to the left</source>
        <translation>移到左侧</translation>
    </message>
    <message>
        <source>No longer there: %1</source>
        <translation>已不存在：%1</translation>
    </message>
    <message>
        <source>Files compared: %1, no differences</source>
        <translation>已比较文件：%1，没有差异</translation>
    </message>
    <message>
        <source>Files compared: %1, differences: %2</source>
        <translation>已比较文件：%1，差异：%2</translation>
    </message>
    <message>
        <source>File format</source>
        <translation>文件格式</translation>
    </message>
    <message>
        <source>&amp;Name:</source>
        <translation>名称(&amp;N)：</translation>
    </message>
    <message>
        <source>&amp;Masks, separated by semicolons:</source>
        <translation>掩码，以分号分隔(&amp;M)：</translation>
    </message>
    <message>
        <source>There is a format &quot;%1&quot; already</source>
        <translation>已有名为“%1”的格式</translation>
    </message>
    <message>
        <source>Add a file format (Ins)</source>
        <translation>添加文件格式 (Ins)</translation>
    </message>
    <message>
        <source>Edit the name and the masks of the selected format (F2)</source>
        <translation>编辑所选格式的名称和掩码 (F2)</translation>
    </message>
    <message>
        <source>Remove the selected format (Del)</source>
        <translation>移除所选格式 (Del)</translation>
    </message>
    <message>
        <source>Add missing defaults</source>
        <translation>补回缺少的默认格式</translation>
    </message>
    <message>
        <source>Brings back the formats that every comparison begins with</source>
        <translation>恢复每次比较起初都有的格式</translation>
    </message>
    <message>
        <source>Compare the two sides</source>
        <translation>比较两侧</translation>
    </message>
    <message>
        <source>Cancel what is being done</source>
        <translation>取消正在进行的操作</translation>
    </message>
    <message>
        <source>Show all rows</source>
        <translation>显示所有行</translation>
    </message>
    <message>
        <source>Show only the rows that differ</source>
        <translation>只显示有差异的行</translation>
    </message>
    <message>
        <source>Copy the selected rows, their columns separated by tabs</source>
        <translation>复制选中的行，各列以制表符分隔</translation>
    </message>
    <message>
        <source>Show the values of the current row in full</source>
        <translation>完整显示当前行的值</translation>
    </message>
    <message>
        <source>Filter</source>
        <translation>过滤</translation>
    </message>
    <message>
        <source>Capture</source>
        <translation>捕获</translation>
    </message>
    <message>
        <source>Capture the current state of this system as the left side</source>
        <translation>捕获本机的当前状态作为左侧</translation>
    </message>
    <message>
        <source>Capture the current state of this system as the right side</source>
        <translation>捕获本机的当前状态作为右侧</translation>
    </message>
    <message>
        <source>Load left side...</source>
        <translation>加载左侧…</translation>
    </message>
    <message>
        <source>Load a snapshot file as the left side</source>
        <translation>加载快照文件作为左侧</translation>
    </message>
    <message>
        <source>Load right side...</source>
        <translation>加载右侧…</translation>
    </message>
    <message>
        <source>Load a snapshot file as the right side</source>
        <translation>加载快照文件作为右侧</translation>
    </message>
    <message>
        <source>Save left side...</source>
        <translation>保存左侧…</translation>
    </message>
    <message>
        <source>Save the left side as a snapshot file</source>
        <translation>将左侧保存为快照文件</translation>
    </message>
    <message>
        <source>Save right side...</source>
        <translation>保存右侧…</translation>
    </message>
    <message>
        <source>Save the right side as a snapshot file</source>
        <translation>将右侧保存为快照文件</translation>
    </message>
    <message>
        <source>Left value</source>
        <translation>左侧的值</translation>
    </message>
    <message>
        <source>Right value</source>
        <translation>右侧的值</translation>
    </message>
    <message>
        <source>Select a row to see its values in full.</source>
        <translation>选择一行即可查看其完整的值。</translation>
    </message>
    <message>
        <source>The file is larger than any snapshot.</source>
        <translation>文件过大，不可能是快照。</translation>
    </message>
    <message>
        <source>This is no JSON: %1</source>
        <translation>这不是 JSON：%1</translation>
    </message>
    <message>
        <source>An object with a text for each item was expected.</source>
        <translation>应为一个对象，其中每一项的值都是文本。</translation>
    </message>
    <message>
        <source>A list of services was expected.</source>
        <translation>应为服务列表。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no text.</source>
        <translation>“%1”不是文本。</translation>
    </message>
    <message>
        <source>There is a service without a name.</source>
        <translation>有一个服务没有名称。</translation>
    </message>
    <message>
        <source>Cannot parse service list JSON</source>
        <translation>无法解析服务列表 JSON</translation>
    </message>
    <message>
        <source>powershell.exe is not on the search path.</source>
        <translation>搜索路径中没有 powershell.exe。</translation>
    </message>
    <message>
        <source>powershell.exe cannot be started: %1</source>
        <translation>无法启动 powershell.exe：%1</translation>
    </message>
    <message>
        <source>PowerShell timed out</source>
        <translation>PowerShell 超时</translation>
    </message>
    <message>
        <source>Cannot open: %1</source>
        <translation>无法打开：%1</translation>
    </message>
    <message>
        <source>Environment variables compare</source>
        <translation>环境变量比较</translation>
    </message>
    <message>
        <source>Left (.kvenv or current environment):</source>
        <translation>左侧（.kvenv 或当前环境）：</translation>
    </message>
    <message>
        <source>Right (.kvenv or current environment):</source>
        <translation>右侧（.kvenv 或当前环境）：</translation>
    </message>
    <message>
        <source>[Current environment]</source>
        <translation>[当前环境]</translation>
    </message>
    <message>
        <source>Leave empty for current process environment</source>
        <translation>留空则使用当前进程的环境</translation>
    </message>
    <message>
        <source>Variable</source>
        <translation>变量</translation>
    </message>
    <message>
        <source>Capture or load both sides, then click Compare.</source>
        <translation>先捕获或加载两侧，再点击“比较”。</translation>
    </message>
    <message>
        <source>Environment snapshot (*.kvenv)</source>
        <translation>环境快照 (*.kvenv)</translation>
    </message>
    <message>
        <source>Variables may hold passwords and keys: the file is readable by its owner only, where the system can do that</source>
        <translation>变量中可能含有密码和密钥：在系统支持的情况下，文件只有其所有者可以读取</translation>
    </message>
    <message>
        <source>Reading the environment...</source>
        <translation>正在读取环境…</translation>
    </message>
    <message>
        <source>Captured %1 variable(s)</source>
        <translation>已捕获 %1 个变量</translation>
    </message>
    <message>
        <source>Compare finished (%1 item(s))</source>
        <translation>比较完成（%1 项）</translation>
    </message>
    <message>
        <source>Invalid environment snapshot format</source>
        <translation>环境快照格式无效</translation>
    </message>
    <message>
        <source>Cannot write: %1</source>
        <translation>无法写入：%1</translation>
    </message>
    <message>
        <source>Folder snapshot compare</source>
        <translation>文件夹快照比较</translation>
    </message>
    <message>
        <source>Left   (folder or .kvsnapshot):</source>
        <translation>左侧（文件夹或 .kvsnapshot）：</translation>
    </message>
    <message>
        <source>Right(folder or .kvsnapshot):</source>
        <translation>右侧（文件夹或 .kvsnapshot）：</translation>
    </message>
    <message>
        <source>A folder, or a snapshot of one</source>
        <translation>文件夹，或文件夹的快照</translation>
    </message>
    <message>
        <source>Browse left</source>
        <translation>浏览左侧</translation>
    </message>
    <message>
        <source>Browse right</source>
        <translation>浏览右侧</translation>
    </message>
    <message>
        <source>Relative path</source>
        <translation>相对路径</translation>
    </message>
    <message>
        <source>Create snapshot from left…</source>
        <translation>从左侧创建快照…</translation>
    </message>
    <message>
        <source>Record the files of the left folder in a snapshot file</source>
        <translation>将左侧文件夹中的文件记录到快照文件</translation>
    </message>
    <message>
        <source>Compare the files</source>
        <translation>比较文件</translation>
    </message>
    <message>
        <source>Compare the files of the current row as they are now (Return)</source>
        <translation>比较当前行文件的现状（回车键）</translation>
    </message>
    <message>
        <source>Compute SHA-256 when creating/scanning (slower)</source>
        <translation>创建/扫描时计算 SHA-256（较慢）</translation>
    </message>
    <message>
        <source>Tells also which contents have changed although size and time have not, and which files have moved</source>
        <translation>还能指出哪些文件大小和时间未变而内容已变，以及哪些文件已移动</translation>
    </message>
    <message>
        <source>Snapshots are JSON (.kvsnapshot). Compare two snapshots or snapshot ↔ live folder.</source>
        <translation>快照为 JSON 文件（.kvsnapshot）。可比较两个快照，或快照与当前文件夹。</translation>
    </message>
    <message>
        <source>Folders and snapshot files can be dropped here, too.</source>
        <translation>也可以将文件夹和快照文件拖放到这里。</translation>
    </message>
    <message>
        <source>Snapshot (*.kvsnapshot)</source>
        <translation>快照 (*.kvsnapshot)</translation>
    </message>
    <message>
        <source>Folder snapshot (*.kvsnapshot)</source>
        <translation>文件夹快照 (*.kvsnapshot)</translation>
    </message>
    <message>
        <source>Folder snapshots and measurements (*.kvsnapshot *.json)</source>
        <translation>文件夹快照和测量结果 (*.kvsnapshot *.json)</translation>
    </message>
    <message>
        <source>Scan the whole folder first</source>
        <translation>请先扫描整个文件夹</translation>
    </message>
    <message>
        <source>Save snapshot</source>
        <translation>保存快照</translation>
    </message>
    <message>
        <source>Snapshot saved: %1 (%2 file(s))</source>
        <translation>快照已保存：%1（%2 个文件）</translation>
    </message>
    <message>
        <source>%1 is there already. Replace it?</source>
        <translation>%1 已存在。要替换它吗？</translation>
    </message>
    <message>
        <source>Enter a folder path on the left to snapshot.</source>
        <translation>请在左侧输入要创建快照的文件夹路径。</translation>
    </message>
    <message>
        <source>Enter left and right paths</source>
        <translation>请输入左侧和右侧路径</translation>
    </message>
    <message>
        <source>Folder does not exist</source>
        <translation>文件夹不存在</translation>
    </message>
    <message>
        <source>Cannot open snapshot: %1</source>
        <translation>无法打开快照：%1</translation>
    </message>
    <message>
        <source>Invalid snapshot format</source>
        <translation>快照格式无效</translation>
    </message>
    <message>
        <source>The file is no JSON from byte %1 on.</source>
        <translation>文件从第 %1 字节起不是 JSON。</translation>
    </message>
    <message>
        <source>It has no list of entries.</source>
        <translation>其中没有条目列表。</translation>
    </message>
    <message>
        <source>Entry %1 is no file of a folder.</source>
        <translation>第 %1 个条目不是文件夹中的文件。</translation>
    </message>
    <message>
        <source>Compare finished — right only %1, left only %2, changed %3, same %4</source>
        <translation>比较完成 — 仅右侧 %1，仅左侧 %2，已更改 %3，相同 %4</translation>
    </message>
    <message>
        <source>Other contents, though size and time are the same: %1</source>
        <translation>大小和时间相同而内容不同：%1</translation>
    </message>
    <message>
        <source>Other contents, though size and time are the same</source>
        <translation>大小和时间相同，但内容不同</translation>
    </message>
    <message>
        <source>Only the time is another, the contents are the same</source>
        <translation>仅时间不同，内容相同</translation>
    </message>
    <message>
        <source>Moved: %1</source>
        <translation>已移动：%1</translation>
    </message>
    <message>
        <source>Moved to %1</source>
        <translation>已移动到 %1</translation>
    </message>
    <message>
        <source>Moved from %1</source>
        <translation>移动自 %1</translation>
    </message>
    <message>
        <source>Could not be read: %1</source>
        <translation>无法读取：%1</translation>
    </message>
    <message>
        <source>Reading folders: %1 entries</source>
        <translation>正在读取文件夹：%1 个条目</translation>
    </message>
    <message>
        <source>Computing SHA-256: %1</source>
        <translation>正在计算 SHA-256：%1</translation>
    </message>
    <message>
        <source>Reading a snapshot</source>
        <translation>正在读取快照</translation>
    </message>
    <message>
        <source>Lists remote files via OpenSSH (ssh/scp) and compares with local. Requires ssh and scp on PATH and key-based or agent login.</source>
        <translation>通过 OpenSSH（ssh/scp）列出远程文件并与本地比较。需要 PATH 中有 ssh 和 scp，并使用密钥或代理登录。</translation>
    </message>
    <message>
        <source>Host:</source>
        <translation>主机：</translation>
    </message>
    <message>
        <source>Port:</source>
        <translation>端口：</translation>
    </message>
    <message>
        <source>User:</source>
        <translation>用户：</translation>
    </message>
    <message>
        <source>Remote folder:</source>
        <translation>远程文件夹：</translation>
    </message>
    <message>
        <source>Local folder:</source>
        <translation>本地文件夹：</translation>
    </message>
    <message>
        <source>Browse local folder</source>
        <translation>浏览本地文件夹</translation>
    </message>
    <message>
        <source>A path on the host; a relative one begins in the home folder</source>
        <translation>主机上的路径；相对路径从主目录开始</translation>
    </message>
    <message>
        <source>Local size</source>
        <translation>本地大小</translation>
    </message>
    <message>
        <source>Remote size</source>
        <translation>远程大小</translation>
    </message>
    <message>
        <source>Different size</source>
        <translation>大小不同</translation>
    </message>
    <message>
        <source>Local only</source>
        <translation>仅本地</translation>
    </message>
    <message>
        <source>Remote only</source>
        <translation>仅远程</translation>
    </message>
    <message>
        <source>Local only: %1</source>
        <translation>仅本地：%1</translation>
    </message>
    <message>
        <source>Remote only: %1</source>
        <translation>仅远程：%1</translation>
    </message>
    <message>
        <source>Not listed: %1</source>
        <translation>未列出：%1</translation>
    </message>
    <message>
        <source>Same contents</source>
        <translation>内容相同</translation>
    </message>
    <message>
        <source>Different contents</source>
        <translation>内容不同</translation>
    </message>
    <message>
        <source>SFTP %1</source>
        <translation>SFTP %1</translation>
    </message>
    <message>
        <source>Compare the local folder with the remote one</source>
        <translation>比较本地文件夹与远程文件夹</translation>
    </message>
    <message>
        <source>Fetch and compare</source>
        <translation>获取并比较</translation>
    </message>
    <message>
        <source>Fetch the remote file of the current row and compare it with the local one (Return)</source>
        <translation>获取当前行的远程文件并与本地文件比较（回车键）</translation>
    </message>
    <message>
        <source>Compare the selected files by SHA-256, which the host computes of its own</source>
        <translation>按 SHA-256 比较选定的文件，远程文件由主机自行计算</translation>
    </message>
    <message>
        <source>Fetch files...</source>
        <translation>获取文件...</translation>
    </message>
    <message>
        <source>Fetch files into</source>
        <translation>获取文件到</translation>
    </message>
    <message>
        <source>Copy the selected remote files into a folder of this computer</source>
        <translation>将选定的远程文件复制到这台计算机的文件夹</translation>
    </message>
    <message>
        <source>How far the clock of the host is from that of this computer</source>
        <translation>主机时钟与这台计算机时钟的差距</translation>
    </message>
    <message>
        <source>Nothing is compared yet. Name the host, the user and both folders.</source>
        <translation>尚未比较。请输入主机、用户和两个文件夹。</translation>
    </message>
    <message>
        <source>Enter host, user, and local folder</source>
        <translation>请输入主机、用户和本地文件夹</translation>
    </message>
    <message>
        <source>Local path is not a folder</source>
        <translation>本地路径不是文件夹</translation>
    </message>
    <message>
        <source>This is no name or address of a host</source>
        <translation>这不是主机名或地址</translation>
    </message>
    <message>
        <source>This is no name of a user</source>
        <translation>这不是用户名</translation>
    </message>
    <message>
        <source>There can be no line feed in the path of the remote folder</source>
        <translation>远程文件夹的路径中不能有换行符</translation>
    </message>
    <message>
        <source>Scanning local and remote…</source>
        <translation>正在扫描本地和远程…</translation>
    </message>
    <message>
        <source>Fetching %1…</source>
        <translation>正在获取 %1…</translation>
    </message>
    <message>
        <source>Fetching files…</source>
        <translation>正在获取文件…</translation>
    </message>
    <message>
        <source>The host computes SHA-256…</source>
        <translation>主机正在计算 SHA-256…</translation>
    </message>
    <message>
        <source>%1 executable not found</source>
        <translation>未找到 %1 可执行文件</translation>
    </message>
    <message>
        <source>%1 cannot be started</source>
        <translation>无法启动 %1</translation>
    </message>
    <message>
        <source>%1 timed out</source>
        <translation>%1 超时</translation>
    </message>
    <message>
        <source>%1 failed (code %2)</source>
        <translation>%1 失败（代码 %2）</translation>
    </message>
    <message>
        <source>The host lists more files than can be shown</source>
        <translation>主机列出的文件太多，无法显示</translation>
    </message>
    <message>
        <source>The host has another key than before: it was set up anew, or somebody else answers. Ask those who run it. If the new key is right, remove the old one: ssh-keygen -R %1</source>
        <translation>主机的密钥与以前不同：可能是重新安装过，也可能是别人在应答。请询问主机的管理者。如果新密钥正确，请删除旧密钥：ssh-keygen -R %1</translation>
    </message>
    <message>
        <source>The key of this host is not known here. Connect once in a terminal, compare the fingerprint with that of those who run the host, and accept it: ssh -p %1 %2@%3</source>
        <translation>这里不认识该主机的密钥。请在终端中连接一次，与主机管理者提供的指纹核对后接受：ssh -p %1 %2@%3</translation>
    </message>
    <message>
        <source>The host does not let you in. Put your key into its list of authorized keys, or into the agent: ssh-add</source>
        <translation>主机拒绝登录。请将您的密钥加入主机的授权密钥列表，或加入代理：ssh-add</translation>
    </message>
    <message>
        <source>The folder may be missing there, or hold one that may not be read.</source>
        <translation>该文件夹可能不存在，或其中有无权读取的文件夹。</translation>
    </message>
    <message>
        <source>Not listed, for line feeds or tabs in their names: %1</source>
        <translation>因名称含换行符或制表符而未列出：%1</translation>
    </message>
    <message>
        <source>If the remote folder is a link, put a / behind it.</source>
        <translation>如果远程文件夹是链接，请在其后加 /。</translation>
    </message>
    <message>
        <source>Compare finished — %1 local file(s), %2 remote file(s). Double-click a "Different size" row to fetch remote file and compare content.</source>
        <translation>比较完成 — %1 个本地文件，%2 个远程文件。双击“大小不同”的行可获取远程文件并比较内容。</translation>
    </message>
    <message>
        <source>Host clock: as here</source>
        <translation>主机时钟：与此处一致</translation>
    </message>
    <message>
        <source>Host clock: %1 s ahead (± %2)</source>
        <translation>主机时钟：快 %1 秒（± %2）</translation>
    </message>
    <message>
        <source>Host clock: %1 s behind (± %2)</source>
        <translation>主机时钟：慢 %1 秒（± %2）</translation>
    </message>
    <message>
        <source>Only files that both sides have can be compared</source>
        <translation>只能比较两侧都有的文件</translation>
    </message>
    <message>
        <source>Local file missing; cannot run text compare</source>
        <translation>本地文件缺失；无法进行文本比较</translation>
    </message>
    <message>
        <source>Fetched: %1</source>
        <translation>已获取：%1</translation>
    </message>
    <message>
        <source>Same contents: %1, different: %2</source>
        <translation>内容相同：%1，不同：%2</translation>
    </message>
    <message>
        <source>Select files that the host has</source>
        <translation>请选择主机上有的文件</translation>
    </message>
    <message>
        <source>Files fetched: %1</source>
        <translation>已获取文件：%1</translation>
    </message>
    <message>
        <source>Left as they are, since something has that name: %1</source>
        <translation>因已有同名项目而保持不变：%1</translation>
    </message>
    <message>
        <source>no time</source>
        <translation>无时间</translation>
    </message>
    <message>
        <source>Neither side has this file on this computer now</source>
        <translation>两侧的这个文件目前都不在这台计算机上</translation>
    </message>
    <message>
        <source>Both sides lead to one file, and a snapshot keeps no contents</source>
        <translation>两侧指向同一个文件，而快照不保存内容</translation>
    </message>
    <message>
        <source>Services compare</source>
        <translation>服务比较</translation>
    </message>
    <message>
        <source>Left (.kvsvc):</source>
        <translation>左侧（.kvsvc）：</translation>
    </message>
    <message>
        <source>Right(.kvsvc):</source>
        <translation>右侧（.kvsvc）：</translation>
    </message>
    <message>
        <source>[Current services]</source>
        <translation>[当前服务]</translation>
    </message>
    <message>
        <source>Service name</source>
        <translation>服务名称</translation>
    </message>
    <message>
        <source>Capture or load Windows service snapshots, then compare (requires PowerShell).</source>
        <translation>捕获或加载 Windows 服务快照，然后比较（需要 PowerShell）。</translation>
    </message>
    <message>
        <source>Service snapshot (*.kvsvc)</source>
        <translation>服务快照 (*.kvsvc)</translation>
    </message>
    <message>
        <source>The names, states and start modes of the services</source>
        <translation>服务的名称、状态和启动方式</translation>
    </message>
    <message>
        <source>Asking PowerShell for the services: %1 of at most %2 seconds</source>
        <translation>正在通过 PowerShell 查询服务：已用 %1 秒，最多 %2 秒</translation>
    </message>
    <message>
        <source>Captured %1 service(s)</source>
        <translation>已捕获 %1 个服务</translation>
    </message>
    <message>
        <source>Services compare finished (%1 item(s))</source>
        <translation>服务比较完成（%1 项）</translation>
    </message>
    <message>
        <source>Invalid service snapshot format</source>
        <translation>服务快照格式无效</translation>
    </message>
    <message>
        <source>Startup items compare</source>
        <translation>启动项比较</translation>
    </message>
    <message>
        <source>Left (.kvstartup):</source>
        <translation>左侧（.kvstartup）：</translation>
    </message>
    <message>
        <source>Right(.kvstartup):</source>
        <translation>右侧（.kvstartup）：</translation>
    </message>
    <message>
        <source>[Current startup]</source>
        <translation>[当前启动项]</translation>
    </message>
    <message>
        <source>Item</source>
        <translation>项目</translation>
    </message>
    <message>
        <source>Captures Registry Run keys and shortcuts/scripts in the user Startup folder (Windows).</source>
        <translation>捕获注册表 Run 键以及用户“启动”文件夹中的快捷方式和脚本（Windows）。</translation>
    </message>
    <message>
        <source>Startup snapshot (*.kvstartup)</source>
        <translation>启动项快照 (*.kvstartup)</translation>
    </message>
    <message>
        <source>The registry values and files that start with the system</source>
        <translation>随系统启动的注册表值和文件</translation>
    </message>
    <message>
        <source>Reading the startup items...</source>
        <translation>正在读取启动项…</translation>
    </message>
    <message>
        <source>Captured %1 item(s)</source>
        <translation>已捕获 %1 项</translation>
    </message>
    <message>
        <source>Cannot write file</source>
        <translation>无法写入文件</translation>
    </message>
    <message>
        <source>Changed</source>
        <translation>已更改</translation>
    </message>
    <message>
        <source>Changed: %1</source>
        <translation>已更改：%1</translation>
    </message>
    <message>
        <source>Result of the comparison</source>
        <translation>比较结果</translation>
    </message>
    <message>
        <source>Words in names and values</source>
        <translation>名称和值中的文字</translation>
    </message>
    <message>
        <source>Shows the rows that hold all of these words (Ctrl+F)</source>
        <translation>显示包含所有这些文字的行 (Ctrl+F)</translation>
    </message>
    <message>
        <source>Not enough memory for these snapshots</source>
        <translation>内存不足，无法处理这些快照</translation>
    </message>
    <message>
        <source>Load the left side</source>
        <translation>加载左侧</translation>
    </message>
    <message>
        <source>Load the right side</source>
        <translation>加载右侧</translation>
    </message>
    <message>
        <source>Loaded %1 item(s)</source>
        <translation>已加载 %1 项</translation>
    </message>
    <message>
        <source>%1 name(s) more than once; the last one counts</source>
        <translation>%1 个名称重复出现，以最后一个为准</translation>
    </message>
    <message>
        <source>Save the left side</source>
        <translation>保存左侧</translation>
    </message>
    <message>
        <source>Save the right side</source>
        <translation>保存右侧</translation>
    </message>
    <message>
        <source>Saved %1</source>
        <translation>已保存 %1</translation>
    </message>
    <message>
        <source>The left side holds nothing yet: capture it or load a file first</source>
        <translation>左侧还没有内容：请先捕获或加载文件</translation>
    </message>
    <message>
        <source>The right side holds nothing yet: capture it or load a file first</source>
        <translation>右侧还没有内容：请先捕获或加载文件</translation>
    </message>
    <message>
        <source>Snapshot files can be dropped here, too.</source>
        <translation>也可以将快照文件拖放到这里。</translation>
    </message>
    <message>
        <source>Choose the left file</source>
        <translation>请选择左侧文件</translation>
    </message>
    <message>
        <source>Choose the right file</source>
        <translation>请选择右侧文件</translation>
    </message>
    <message>
        <source>Programs and libraries (*.exe *.dll *.sys *.ocx *.so *.so.*)</source>
        <translation>程序和库 (*.exe *.dll *.sys *.ocx *.so *.so.*)</translation>
    </message>
    <message>
        <source>Left program or library...</source>
        <translation>左侧程序或库...</translation>
    </message>
    <message>
        <source>Right program or library...</source>
        <translation>右侧程序或库...</translation>
    </message>
    <message>
        <source>Choose two programs or libraries, then click Compare. Files can be dropped here, too.</source>
        <translation>请选择两个程序或库，然后点击“比较”。也可以把文件拖放到这里。</translation>
    </message>
    <message>
        <source>Version resource, fixed numbers</source>
        <translation>版本资源，固定数字</translation>
    </message>
    <message>
        <source>Version resource, strings</source>
        <translation>版本资源，字符串</translation>
    </message>
    <message>
        <source>Version resource, languages</source>
        <translation>版本资源，语言</translation>
    </message>
    <message>
        <source>Dynamic section</source>
        <translation>动态节</translation>
    </message>
    <message>
        <source>Notes</source>
        <translation>注释节</translation>
    </message>
    <message>
        <source>File header</source>
        <translation>文件头</translation>
    </message>
    <message>
        <source>Optional header</source>
        <translation>可选头</translation>
    </message>
    <message>
        <source>Import table</source>
        <translation>导入表</translation>
    </message>
    <message>
        <source>Table of delayed imports</source>
        <translation>延迟导入表</translation>
    </message>
    <message>
        <source>Export table</source>
        <translation>导出表</translation>
    </message>
    <message>
        <source>Section of comments</source>
        <translation>编译器注释节</translation>
    </message>
    <message>
        <source>Debug directory</source>
        <translation>调试目录</translation>
    </message>
    <message>
        <source>Resources</source>
        <translation>资源</translation>
    </message>
    <message>
        <source>Signature</source>
        <translation>签名</translation>
    </message>
    <message>
        <source>Section headers</source>
        <translation>节头</translation>
    </message>
    <message>
        <source>Section contents</source>
        <translation>节内容</translation>
    </message>
    <message>
        <source>Computed from the file</source>
        <translation>由文件计算得出</translation>
    </message>
    <message>
        <source>File version</source>
        <translation>文件版本</translation>
    </message>
    <message>
        <source>Product version</source>
        <translation>产品版本</translation>
    </message>
    <message>
        <source>Version flags</source>
        <translation>版本标志</translation>
    </message>
    <message>
        <source>Intended system</source>
        <translation>目标系统</translation>
    </message>
    <message>
        <source>Type of file</source>
        <translation>文件类型</translation>
    </message>
    <message>
        <source>Languages</source>
        <translation>语言</translation>
    </message>
    <message>
        <source>Library name (soname)</source>
        <translation>库名称（soname）</translation>
    </message>
    <message>
        <source>Build identity</source>
        <translation>构建标识</translation>
    </message>
    <message>
        <source>Machine</source>
        <translation>机器</translation>
    </message>
    <message>
        <source>Kind of object</source>
        <translation>对象类型</translation>
    </message>
    <message>
        <source>Subsystem</source>
        <translation>子系统</translation>
    </message>
    <message>
        <source>System version needed</source>
        <translation>所需系统版本</translation>
    </message>
    <message>
        <source>Link time</source>
        <translation>链接时间</translation>
    </message>
    <message>
        <source>Linker version</source>
        <translation>链接器版本</translation>
    </message>
    <message>
        <source>Checksum, stored</source>
        <translation>校验和（存储的）</translation>
    </message>
    <message>
        <source>Checksum, computed</source>
        <translation>校验和（计算的）</translation>
    </message>
    <message>
        <source>Image base</source>
        <translation>映像基址</translation>
    </message>
    <message>
        <source>Size of image</source>
        <translation>映像大小</translation>
    </message>
    <message>
        <source>Entry point</source>
        <translation>入口点</translation>
    </message>
    <message>
        <source>File flags</source>
        <translation>文件标志</translation>
    </message>
    <message>
        <source>Library flags</source>
        <translation>库标志</translation>
    </message>
    <message>
        <source>Needs %1</source>
        <translation>需要 %1</translation>
    </message>
    <message>
        <source>Search path for libraries</source>
        <translation>库搜索路径</translation>
    </message>
    <message>
        <source>Interpreter</source>
        <translation>解释器</translation>
    </message>
    <message>
        <source>Imports from %1</source>
        <translation>从 %1 导入</translation>
    </message>
    <message>
        <source>Delayed imports from %1</source>
        <translation>从 %1 延迟导入</translation>
    </message>
    <message>
        <source>Name in exports</source>
        <translation>导出名称</translation>
    </message>
    <message>
        <source>Exports</source>
        <translation>导出</translation>
    </message>
    <message>
        <source>Compiler notes</source>
        <translation>编译器注释</translation>
    </message>
    <message>
        <source>Debug identity</source>
        <translation>调试标识</translation>
    </message>
    <message>
        <source>Debug file</source>
        <translation>调试文件</translation>
    </message>
    <message>
        <source>Manifest</source>
        <translation>清单</translation>
    </message>
    <message>
        <source>Signature, bytes</source>
        <translation>签名大小（字节）</translation>
    </message>
    <message>
        <source>Signer (not verified)</source>
        <translation>签名者（未验证）</translation>
    </message>
    <message>
        <source>Section %1: size</source>
        <translation>节 %1：大小</translation>
    </message>
    <message>
        <source>Section %1: flags</source>
        <translation>节 %1：标志</translation>
    </message>
    <message>
        <source>Section %1: SHA-256</source>
        <translation>节 %1：SHA-256</translation>
    </message>
    <message>
        <source>File size, bytes</source>
        <translation>文件大小（字节）</translation>
    </message>
    <message>
        <source>SHA-256 of the file</source>
        <translation>文件的 SHA-256</translation>
    </message>
    <message>
        <source>sections</source>
        <translation>节</translation>
    </message>
    <message>
        <source>version resource</source>
        <translation>版本资源</translation>
    </message>
    <message>
        <source>resources</source>
        <translation>资源</translation>
    </message>
    <message>
        <source>imports</source>
        <translation>导入表</translation>
    </message>
    <message>
        <source>exports</source>
        <translation>导出表</translation>
    </message>
    <message>
        <source>debug directory</source>
        <translation>调试目录</translation>
    </message>
    <message>
        <source>signature</source>
        <translation>签名</translation>
    </message>
    <message>
        <source>dynamic section</source>
        <translation>动态节</translation>
    </message>
    <message>
        <source>notes</source>
        <translation>注释节</translation>
    </message>
    <message>
        <source>%1, at %2 on the left and %3 on the right</source>
        <translation>%1，左侧位于 %2，右侧位于 %3</translation>
    </message>
    <message>
        <source>%1, at %2</source>
        <translation>%1，位于 %2</translation>
    </message>
    <message>
        <source>Both are the same file, byte for byte.</source>
        <translation>两个文件逐字节相同。</translation>
    </message>
    <message>
        <source>The same program: only the build identity or the name of the debug file differs.</source>
        <translation>同一程序：仅构建标识或调试文件名不同。</translation>
    </message>
    <message>
        <source>The same program: only time stamps, the checksum or the signature differ.</source>
        <translation>同一程序：仅时间戳、校验和或签名不同。</translation>
    </message>
    <message>
        <source>nobody</source>
        <translation>无人签名</translation>
    </message>
    <message>
        <source>Signed by (not verified): left %1, right %2.</source>
        <translation>签名者（未验证）：左侧 %1，右侧 %2。</translation>
    </message>
    <message>
        <source>For different machines: left %1, right %2.</source>
        <translation>面向不同的处理器：左侧 %1，右侧 %2。</translation>
    </message>
    <message>
        <source>The left file is newer: version %1 against %2.</source>
        <translation>左侧文件较新：版本 %1 对 %2。</translation>
    </message>
    <message>
        <source>The right file is newer: version %2 against %1.</source>
        <translation>右侧文件较新：版本 %2 对 %1。</translation>
    </message>
    <message>
        <source>Both say that they are version %1, and their contents differ.</source>
        <translation>两者都标明版本为 %1，但内容不同。</translation>
    </message>
    <message>
        <source>The contents differ, and not both files say which version they are.</source>
        <translation>内容不同，且并非两个文件都标明了版本。</translation>
    </message>
    <message>
        <source>Damaged or cut off in %1: %2.</source>
        <translation>%1 中损坏或被截断的部分：%2。</translation>
    </message>
    <message>
        <source>Music (*.mp3 *.flac *.ogg *.oga *.opus *.spx *.m4a *.m4b *.mp4 *.wav *.aif *.aiff *.aifc)</source>
        <translation>音乐 (*.mp3 *.flac *.ogg *.oga *.opus *.spx *.m4a *.m4b *.mp4 *.wav *.aif *.aiff *.aifc)</translation>
    </message>
    <message>
        <source>Left music file...</source>
        <translation>左侧音乐文件...</translation>
    </message>
    <message>
        <source>Right music file...</source>
        <translation>右侧音乐文件...</translation>
    </message>
    <message>
        <source>Choose two pieces of music, then click Compare. Files can be dropped here, too.</source>
        <translation>请选择两个音乐文件，然后点击“比较”。也可以把文件拖放到这里。</translation>
    </message>
    <message>
        <source>Edit tags</source>
        <translation>编辑标签</translation>
    </message>
    <message>
        <source>Let tags be copied from one file to the other; nothing is written until you save</source>
        <translation>允许把标签从一个文件复制到另一个文件；保存之前不会写入任何内容</translation>
    </message>
    <message>
        <source>Make the selected fields of the right file like those of the left one</source>
        <translation>使右侧文件中选中的字段与左侧文件相同</translation>
    </message>
    <message>
        <source>Make the selected fields of the left file like those of the right one</source>
        <translation>使左侧文件中选中的字段与右侧文件相同</translation>
    </message>
    <message>
        <source>Copy all tags to the right</source>
        <translation>把全部标签复制到右侧</translation>
    </message>
    <message>
        <source>Copy all tags to the left</source>
        <translation>把全部标签复制到左侧</translation>
    </message>
    <message>
        <source>Write the changed tags into their files; the sound stays as it is</source>
        <translation>把更改后的标签写入文件；声音保持不变</translation>
    </message>
    <message>
        <source>Texts without a known encoding:</source>
        <translation>编码未知的文本：</translation>
    </message>
    <message>
        <source>Tags of old programs do not tell the encoding of their texts. Choose one that makes them readable.</source>
        <translation>旧程序写入的标签没有说明文本的编码。请选择能正常显示的编码。</translation>
    </message>
    <message>
        <source>Tags were changed and are not saved. Read the files again and lose that?</source>
        <translation>标签已更改但尚未保存。要重新读取文件并放弃更改吗？</translation>
    </message>
    <message>
        <source>Tags were changed and are not saved. Save them?</source>
        <translation>标签已更改但尚未保存。要保存吗？</translation>
    </message>
    <message>
        <source>Changed the tags of the left file; not saved yet</source>
        <translation>已更改左侧文件的标签；尚未保存</translation>
    </message>
    <message>
        <source>Changed the tags of the right file; not saved yet</source>
        <translation>已更改右侧文件的标签；尚未保存</translation>
    </message>
    <message>
        <source>Changed the tags of the left file, its other tags in step; not saved yet</source>
        <translation>已更改左侧文件的标签，其他标签随之更新；尚未保存</translation>
    </message>
    <message>
        <source>Changed the tags of the right file, its other tags in step; not saved yet</source>
        <translation>已更改右侧文件的标签，其他标签随之更新；尚未保存</translation>
    </message>
    <message>
        <source>Nothing here can be copied to that side, or it is the same already</source>
        <translation>这里没有可以复制到那一侧的内容，或者内容已经相同</translation>
    </message>
    <message>
        <source>The tags differ from what is saved</source>
        <translation>标签与已保存的内容不同</translation>
    </message>
    <message>
        <source>The tags are as they are saved</source>
        <translation>标签与已保存的内容相同</translation>
    </message>
    <message>
        <source>Save tags</source>
        <translation>保存标签</translation>
    </message>
    <message>
        <source>Saved; the sound is the same as before</source>
        <translation>已保存；声音与之前相同</translation>
    </message>
    <message>
        <source>Not saved; the file is as it was</source>
        <translation>未保存；文件保持原样</translation>
    </message>
    <message>
        <source>Length</source>
        <translation>时长</translation>
    </message>
    <message>
        <source>Bit rate</source>
        <translation>比特率</translation>
    </message>
    <message>
        <source>Bit rate mode</source>
        <translation>比特率模式</translation>
    </message>
    <message>
        <source>Sample rate</source>
        <translation>采样率</translation>
    </message>
    <message>
        <source>Channels</source>
        <translation>声道数</translation>
    </message>
    <message>
        <source>Channel mode</source>
        <translation>声道模式</translation>
    </message>
    <message>
        <source>Bits per sample</source>
        <translation>采样位数</translation>
    </message>
    <message>
        <source>Encoder</source>
        <translation>编码器</translation>
    </message>
    <message>
        <source>Silent samples before and behind</source>
        <translation>首尾的静音采样数</translation>
    </message>
    <message>
        <source>Frames, as the encoder says</source>
        <translation>帧数（编码器注明）</translation>
    </message>
    <message>
        <source>Sound, bytes</source>
        <translation>声音大小（字节）</translation>
    </message>
    <message>
        <source>MD5 of the samples, stored</source>
        <translation>采样数据的 MD5（已存储）</translation>
    </message>
    <message>
        <source>SHA-256 of the sound</source>
        <translation>声音的 SHA-256</translation>
    </message>
    <message>
        <source>Version of ID3v2</source>
        <translation>ID3v2 版本</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>标题</translation>
    </message>
    <message>
        <source>Artist</source>
        <translation>艺术家</translation>
    </message>
    <message>
        <source>Album</source>
        <translation>专辑</translation>
    </message>
    <message>
        <source>Album artist</source>
        <translation>专辑艺术家</translation>
    </message>
    <message>
        <source>Year</source>
        <translation>年份</translation>
    </message>
    <message>
        <source>Track</source>
        <translation>音轨</translation>
    </message>
    <message>
        <source>Disc</source>
        <translation>光盘</translation>
    </message>
    <message>
        <source>Genre</source>
        <translation>流派</translation>
    </message>
    <message>
        <source>Composer</source>
        <translation>作曲</translation>
    </message>
    <message>
        <source>Comment</source>
        <translation>注释</translation>
    </message>
    <message>
        <source>Lyrics</source>
        <translation>歌词</translation>
    </message>
    <message>
        <source>Copyright</source>
        <translation>版权</translation>
    </message>
    <message>
        <source>Publisher</source>
        <translation>发行商</translation>
    </message>
    <message>
        <source>Tempo</source>
        <translation>速度</translation>
    </message>
    <message>
        <source>Part of a compilation</source>
        <translation>合辑</translation>
    </message>
    <message>
        <source>Picture</source>
        <translation>图片</translation>
    </message>
    <message>
        <source>Stereo</source>
        <translation>立体声</translation>
    </message>
    <message>
        <source>Joint stereo</source>
        <translation>联合立体声</translation>
    </message>
    <message>
        <source>Two channels</source>
        <translation>双声道</translation>
    </message>
    <message>
        <source>Mono</source>
        <translation>单声道</translation>
    </message>
    <message>
        <source>Constant (CBR)</source>
        <translation>固定 (CBR)</translation>
    </message>
    <message>
        <source>Average (ABR)</source>
        <translation>平均 (ABR)</translation>
    </message>
    <message>
        <source>Variable (VBR)</source>
        <translation>可变 (VBR)</translation>
    </message>
    <message>
        <source>%1 kbit/s</source>
        <translation>%1 kbit/s</translation>
    </message>
    <message>
        <source>%1 Hz</source>
        <translation>%1 Hz</translation>
    </message>
    <message>
        <source>File icon</source>
        <translation>文件图标</translation>
    </message>
    <message>
        <source>Front cover</source>
        <translation>封面</translation>
    </message>
    <message>
        <source>Back cover</source>
        <translation>封底</translation>
    </message>
    <message>
        <source>Booklet page</source>
        <translation>小册子页</translation>
    </message>
    <message>
        <source>Medium</source>
        <translation>介质</translation>
    </message>
    <message>
        <source>Other kind</source>
        <translation>其他类型</translation>
    </message>
    <message>
        <source>Kind %1</source>
        <translation>类型 %1</translation>
    </message>
    <message>
        <source>Contradiction: %1</source>
        <translation>矛盾：%1</translation>
    </message>
    <message>
        <source>Tag: %1</source>
        <translation>标签：%1</translation>
    </message>
    <message>
        <source>%1 on the left, %2 on the right</source>
        <translation>左侧 %1，右侧 %2</translation>
    </message>
    <message>
        <source>Tags of one file that say different things</source>
        <translation>同一文件中内容不一致的标签</translation>
    </message>
    <message>
        <source>The same sound with the same tags; they are only arranged otherwise in the files.</source>
        <translation>声音和标签都相同，只是在文件中的排列不同。</translation>
    </message>
    <message>
        <source>The same sound, with other tags.</source>
        <translation>声音相同，标签不同。</translation>
    </message>
    <message>
        <source>The same sound, encoded otherwise without loss.</source>
        <translation>声音相同，以不同方式无损编码。</translation>
    </message>
    <message>
        <source>Other sound, with the same tags.</source>
        <translation>声音不同，标签相同。</translation>
    </message>
    <message>
        <source>Other sound, and other tags.</source>
        <translation>声音不同，标签也不同。</translation>
    </message>
    <message>
        <source>The tags of %1 contradict each other: %2.</source>
        <translation>%1 的标签互相矛盾：%2。</translation>
    </message>
    <message>
        <source>The sound of %1 is cut off.</source>
        <translation>%1 的声音被截断。</translation>
    </message>
    <message>
        <source>The ID3v2 tag of %1 is damaged: its last %2 bytes cannot be read, and saving leaves them out.</source>
        <translation>%1 的 ID3v2 标签已损坏：末尾 %2 字节无法读取，保存时会被丢弃。</translation>
    </message>
    <message>
        <source>An ID3v1 tag of %1 is not read: it is cut off, or is not the last thing in the file.</source>
        <translation>未读取 %1 的一个 ID3v1 标签：它被截断，或不在文件末尾。</translation>
    </message>
    <message>
        <source>The lyrics behind the sound of %1 (Lyrics3) are damaged: they are cut off, or their length is wrong.</source>
        <translation>%1 声音之后的歌词（Lyrics3）已损坏：被截断，或长度有误。</translation>
    </message>
    <message>
        <source>An APE tag of %1 is not read: it is before the sound, or before other tags.</source>
        <translation>未读取 %1 的一个 APE 标签：它位于声音之前，或位于其他标签之前。</translation>
    </message>
    <message>
        <source>The APE tag of %1 is damaged: it has a beginning and no end. It is not read, and the tags of this file cannot be saved.</source>
        <translation>%1 的 APE 标签已损坏：有开头而没有结尾。该标签未读取，此文件的标签无法保存。</translation>
    </message>
    <message>
        <source>The APE tag of %1 is damaged: the length that it gives, %2 bytes, does not lead to its beginning. It is not read, and the tags of this file cannot be saved.</source>
        <translation>%1 的 APE 标签已损坏：它给出的长度（%2 字节）指不到它的开头。该标签未读取，此文件的标签无法保存。</translation>
    </message>
    <message>
        <source>The APE tag of %1 is damaged: its beginning is missing, or does not agree with its end. The tags of this file cannot be saved.</source>
        <translation>%1 的 APE 标签已损坏：开头缺失，或与结尾不一致。此文件的标签无法保存。</translation>
    </message>
    <message>
        <source>The APE tag of %1 is damaged: it says that it has %2 fields, and has fewer.</source>
        <translation>%1 的 APE 标签已损坏：它声称有 %2 个字段，实际没有这么多。</translation>
    </message>
    <message>
        <source>The APE tag of %1 is damaged: %2 bytes in it belong to no field and cannot be read, and saving leaves them out.</source>
        <translation>%1 的 APE 标签已损坏：其中 %2 字节不属于任何字段，无法读取，保存时会被丢弃。</translation>
    </message>
    <message>
        <source>The APE tag of %1 is damaged: fields with names that are not allowed are not read, and saving leaves them out (%2, the first is "%3").</source>
        <translation>%1 的 APE 标签已损坏：名称不合规的字段未读取，保存时会被丢弃（共 %2 个，第一个是“%3”）。</translation>
    </message>
    <message>
        <source>The APE tag of %1 is damaged: values lead out of it and are read as far as they are there (%2, the first is "%3").</source>
        <translation>%1 的 APE 标签已损坏：有的值超出标签范围，只读取了存在的部分（共 %2 个，第一个是“%3”）。</translation>
    </message>
    <message>
        <source>The APE tag of %1 is damaged: of fields with the same name the last is read, and saving leaves the others out (%2, the first is "%3").</source>
        <translation>%1 的 APE 标签已损坏：同名字段只读取最后一个，保存时其余的会被丢弃（共 %2 个，第一个是“%3”）。</translation>
    </message>
    <message>
        <source>The APE tag of %1 has fields with marks that were never laid down, and saving leaves these out (%2, the first is "%3").</source>
        <translation>%1 的 APE 标签中有的字段带有从未规定过的标志，保存时这些标志会被丢弃（共 %2 个，第一个是“%3”）。</translation>
    </message>
    <message>
        <source>The APE tag of %1 has texts in an old encoding, which such tags must not have; the tags of this file cannot be saved (%2, the first is "%3").</source>
        <translation>%1 的 APE 标签中有旧编码的文本，而这类标签不允许这样；此文件的标签无法保存（共 %2 个，第一个是“%3”）。</translation>
    </message>
    <message>
        <source>The sound of %1 is damaged, places: %2.</source>
        <translation>%1 的声音已损坏，处数：%2。</translation>
    </message>
    <message>
        <source>No music of a format that is known: %1</source>
        <translation>不是已知格式的音乐：%1</translation>
    </message>
    <message>
        <source>No sound can be found, as the file is damaged or cut off: %1</source>
        <translation>文件已损坏或被截断，找不到声音：%1</translation>
    </message>
    <message>
        <source>Of 2 GiB or more, or with tags larger than any that are read: %1</source>
        <translation>文件达到 2 GiB，或标签过大而无法读取：%1</translation>
    </message>
    <message>
        <source>Not saved, as another program has changed it since it was read: %1</source>
        <translation>未保存，因为读取之后有其他程序更改了该文件：%1</translation>
    </message>
    <message>
        <source>Not saved, as it has tags that cannot be written again: %1</source>
        <translation>未保存，因为其中有无法重新写入的标签：%1</translation>
    </message>
    <message>
        <source>Not saved, as that would change the sound: %1</source>
        <translation>未保存，因为这样会改变声音：%1</translation>
    </message>
    <message>
        <source>Cannot save: %1</source>
        <translation>无法保存：%1</translation>
    </message>
    <message>
        <source>%1 cannot hold these fields as they ought to be:
%2</source>
        <translation>%1 无法按原样保存以下字段：
%2</translation>
    </message>
    <message>
        <source>The tags of %1 are damaged. What cannot be read of them will no longer be in the file.</source>
        <translation>%1 的标签已损坏，其中无法读取的内容将不再保留在文件中。</translation>
    </message>
    <message>
        <source>Save it all the same?</source>
        <translation>仍要保存吗？</translation>
    </message>
    <message>
        <source>%1: none</source>
        <translation>%1：无</translation>
    </message>
    <message>
        <source>This picture cannot be shown.</source>
        <translation>无法显示此图片。</translation>
    </message>
    <message>
        <source>Only in the left file</source>
        <translation>仅左侧文件有</translation>
    </message>
    <message>
        <source>Only in the right file</source>
        <translation>仅右侧文件有</translation>
    </message>
    <message>
        <source>The same picture in both</source>
        <translation>两侧图片相同</translation>
    </message>
    <message>
        <source>Different pictures</source>
        <translation>图片不同</translation>
    </message>
    <message>
        <source>The same pixels, stored otherwise</source>
        <translation>像素相同，存储方式不同</translation>
    </message>
    <message>
        <source>%1 % of the pixels differ</source>
        <translation>%1 % 的像素不同</translation>
    </message>
    <message>
        <source>(default)</source>
        <translation>（默认）</translation>
    </message>
    <message>
        <source>(deletes this key)</source>
        <translation>（删除此项）</translation>
    </message>
    <message>
        <source>(key)</source>
        <translation>（项）</translation>
    </message>
    <message>
        <source>(deletes this value)</source>
        <translation>（删除此值）</translation>
    </message>
    <message>
        <source>the same entries in another order or letter case</source>
        <translation>条目相同，仅顺序或大小写不同</translation>
    </message>
    <message>
        <source>entries added: %1, removed: %2</source>
        <translation>增加条目：%1，移除：%2</translation>
    </message>
    <message>
        <source>noise</source>
        <translation>噪声</translation>
    </message>
    <message>
        <source>Noise</source>
        <translation>噪声</translation>
    </message>
    <message>
        <source>Noise...</source>
        <translation>噪声...</translation>
    </message>
    <message>
        <source>Both sides hold the same keys and values.</source>
        <translation>两侧的项和值相同。</translation>
    </message>
    <message>
        <source>%1 of %2 keys and values differ.</source>
        <translation>%2 个项和值中有 %1 个不同。</translation>
    </message>
    <message>
        <source>%1 more differ and are taken for noise.</source>
        <translation>另有 %1 个不同，视为噪声。</translation>
    </message>
    <message>
        <source>Keys in %1 that could not be read and are left out: %2.</source>
        <translation>%1 中无法读取而略去的项：%2。</translation>
    </message>
    <message>
        <source>Lines of %1 that are no entries and were left out: %2, the first is line %3.</source>
        <translation>%1 中不是有效条目而略去的行：%2，第一处在第 %3 行。</translation>
    </message>
    <message>
        <source>%1 does not end with an empty line, as exports do; it may be cut off.</source>
        <translation>%1 不像导出文件那样以空行结尾，可能已被截断。</translation>
    </message>
    <message>
        <source>No file of registry entries: %1</source>
        <translation>不是注册表文件：%1</translation>
    </message>
    <message>
        <source>Cannot read this key of the registry: %1</source>
        <translation>无法读取此注册表项：%1</translation>
    </message>
    <message>
        <source>Lists of what was used last</source>
        <translation>最近使用列表</translation>
    </message>
    <message>
        <source>Places and views of windows</source>
        <translation>窗口位置和视图</translation>
    </message>
    <message>
        <source>Counters and times of use</source>
        <translation>计数器和使用时间</translation>
    </message>
    <message>
        <source>Caches</source>
        <translation>缓存</translation>
    </message>
    <message>
        <source>Masks of your own</source>
        <translation>自定义掩码</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>值</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>类型</translation>
    </message>
    <message>
        <source>Registry key</source>
        <translation>注册表项</translation>
    </message>
    <message>
        <source>Registry keys</source>
        <translation>注册表项</translation>
    </message>
    <message>
        <source>All keys</source>
        <translation>所有项</translation>
    </message>
    <message>
        <source>Differences that a ticked profile matches are shown as noise: they are not counted, not stepped to and not part of what is written.</source>
        <translation>与勾选的方案匹配的差异显示为噪声：不计数，不跳转，也不会写出。</translation>
    </message>
    <message>
        <source>Masks, one a line:</source>
        <translation>掩码，每行一个：</translation>
    </message>
    <message>
        <source>Each stands for the path of a key, a backslash and the name of a value: * is any run of letters, ? any one</source>
        <translation>每个掩码对应项的路径、反斜杠和值的名称：* 表示任意多个字符，? 表示任意一个字符</translation>
    </message>
    <message>
        <source>Restore masks</source>
        <translation>恢复掩码</translation>
    </message>
    <message>
        <source>Choose what changes all the time and is left out</source>
        <translation>选择经常变化而应略去的内容</translation>
    </message>
    <message>
        <source>Encoding</source>
        <translation>编码</translation>
    </message>
    <message>
        <source>Choose the code page of files that are not in Unicode</source>
        <translation>选择非 Unicode 文件的代码页</translation>
    </message>
    <message>
        <source>%1 is read as %2; "Encoding" has others.</source>
        <translation>%1 按 %2 读取；“编码”中有其他选择。</translation>
    </message>
    <message>
        <source>Auto detect (%1)</source>
        <translation>自动检测 (%1)</translation>
    </message>
    <message>
        <source>Save what makes left into right...</source>
        <translation>保存使左侧变为右侧的内容...</translation>
    </message>
    <message>
        <source>Write a .reg file with all that differs, noise left out</source>
        <translation>把所有差异（不含噪声）写入 .reg 文件</translation>
    </message>
    <message>
        <source>Save what makes right into left...</source>
        <translation>保存使右侧变为左侧的内容...</translation>
    </message>
    <message>
        <source>Write a .reg file with the way back</source>
        <translation>写入用于还原的 .reg 文件</translation>
    </message>
    <message>
        <source>Write the whole left side as a .reg file</source>
        <translation>把整个左侧写为 .reg 文件</translation>
    </message>
    <message>
        <source>Write the whole right side as a .reg file</source>
        <translation>把整个右侧写为 .reg 文件</translation>
    </message>
    <message>
        <source>Write right to the left key...</source>
        <translation>把右侧写入左侧的项...</translation>
    </message>
    <message>
        <source>Make a live key at the left like the right side, after a look at what that writes</source>
        <translation>查看将写入的内容后，使左侧的实时项与右侧一致</translation>
    </message>
    <message>
        <source>Write left to the right key...</source>
        <translation>把左侧写入右侧的项...</translation>
    </message>
    <message>
        <source>Make a live key at the right like the left side, after a look at what that writes</source>
        <translation>查看将写入的内容后，使右侧的实时项与左侧一致</translation>
    </message>
    <message>
        <source>Save sides, or what makes one into the other</source>
        <translation>保存各侧，或保存使一侧变为另一侧的内容</translation>
    </message>
    <message>
        <source>Registry entries (*.reg)</source>
        <translation>注册表文件 (*.reg)</translation>
    </message>
    <message>
        <source>Left .reg file, or a key such as HKCU\Software</source>
        <translation>左侧 .reg 文件，或注册表项，如 HKCU\Software</translation>
    </message>
    <message>
        <source>Left .reg file...</source>
        <translation>左侧 .reg 文件...</translation>
    </message>
    <message>
        <source>Right .reg file, or a key such as 32:HKLM\Software</source>
        <translation>右侧 .reg 文件，或注册表项，如 32:HKLM\Software</translation>
    </message>
    <message>
        <source>Right .reg file...</source>
        <translation>右侧 .reg 文件...</translation>
    </message>
    <message>
        <source>Choose two .reg files, then click Compare. Files can be dropped here, too.</source>
        <translation>请选择两个 .reg 文件，然后点击“比较”。也可以把文件拖放到这里。</translation>
    </message>
    <message>
        <source>Write to the registry</source>
        <translation>写入注册表</translation>
    </message>
    <message>
        <source>This is going to be written to the registry of this system, below %1. What is there now is kept in a .reg file before.</source>
        <translation>以下内容将写入本系统注册表的 %1 之下。写入前，现有内容会保存到 .reg 文件。</translation>
    </message>
    <message>
        <source>Keep and write...</source>
        <translation>保存现有内容并写入...</translation>
    </message>
    <message>
        <source>Save what makes left into right</source>
        <translation>保存使左侧变为右侧的内容</translation>
    </message>
    <message>
        <source>Save what makes right into left</source>
        <translation>保存使右侧变为左侧的内容</translation>
    </message>
    <message>
        <source>Keep what is in the registry now</source>
        <translation>保存注册表中现有的内容</translation>
    </message>
    <message>
        <source>The key has changed since it was compared: nothing was written</source>
        <translation>该项在比较之后已更改：未写入任何内容</translation>
    </message>
    <message>
        <source>Nothing was written to the registry</source>
        <translation>未向注册表写入任何内容</translation>
    </message>
    <message>
        <source>Writing ended at %1: what was there is in %2</source>
        <translation>写入在 %1 处中止：原有内容保存在 %2</translation>
    </message>
    <message>
        <source>Neither a program nor a library: %1</source>
        <translation>既不是程序也不是库：%1</translation>
    </message>
    <message>
        <source>The headers of this program are damaged or cut off: %1</source>
        <translation>此程序的文件头已损坏或被截断：%1</translation>
    </message>
    <message>
        <source>Neither side holds an item.</source>
        <translation>两侧都没有任何项目。</translation>
    </message>
    <message>
        <source>Both sides are the same.</source>
        <translation>两侧相同。</translation>
    </message>
    <message>
        <source>Nothing differs but noise.</source>
        <translation>除噪声外没有差异。</translation>
    </message>
    <message>
        <source>Nothing is the same on both sides.</source>
        <translation>两侧没有相同的内容。</translation>
    </message>
    <message>
        <source>No row holds these words.</source>
        <translation>没有包含这些文字的行。</translation>
    </message>
    <message>
        <source>No row of this key holds these words.</source>
        <translation>此项中没有包含这些词的行。</translation>
    </message>
    <message>
        <source>Search all keys</source>
        <translation>搜索所有项</translation>
    </message>
    <message>
        <source>Show the rows of all keys that hold the words of the filter</source>
        <translation>显示所有项中包含过滤词的行</translation>
    </message>
    <message>
        <source>Copy the name</source>
        <translation>复制名称</translation>
    </message>
    <message>
        <source>Copy the left value</source>
        <translation>复制左侧的值</translation>
    </message>
    <message>
        <source>Copy the right value</source>
        <translation>复制右侧的值</translation>
    </message>
    <message>
        <source>powershell.exe wrote no list of services.</source>
        <translation>powershell.exe 没有输出服务列表。</translation>
    </message>
    <message>
        <source>The folder on the other side could not be read</source>
        <translation>另一侧的文件夹无法读取</translation>
    </message>
    <message>
        <source>in the recycle bin, to be taken out there: %1</source>
        <translation>已在回收站中，需从回收站取回：%1</translation>
    </message>
    <message>
        <source>It is in the recycle bin; take it out there</source>
        <translation>它在回收站中，请从回收站取回</translation>
    </message>
    <message>
        <source>It is no longer in the recycle bin</source>
        <translation>它已不在回收站中</translation>
    </message>
    <message>
        <source>Another entry lies at its place in the recycle bin; it stays there</source>
        <translation>回收站中原来的位置上是另一个项目，它会留在那里</translation>
    </message>
    <message>
        <source>A command is still working on files. Stop it and close? What it has done so far stays done.</source>
        <translation>有命令仍在处理文件。要停止它并关闭吗？已完成的部分会保留。</translation>
    </message>
</context>
</TS>
