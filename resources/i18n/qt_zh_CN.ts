<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>CloseButton</name>
    <message>
        <source>Close Tab</source>
        <translation>关闭标签页</translation>
    </message>
</context>
<context>
    <name>QAbstractFileIconProvider</name>
    <message>
        <source>Drive</source>
        <translation>驱动器</translation>
    </message>
    <message>
        <source>File Folder</source>
        <translation>文件夹</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>文件夹</translation>
    </message>
    <message>
        <source>Alias</source>
        <translation>替身</translation>
    </message>
    <message>
        <source>Shortcut</source>
        <translation>快捷方式</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>未知</translation>
    </message>
</context>
<context>
    <name>QAbstractSpinBox</name>
    <message>
        <source>&amp;Select All</source>
        <translation>全选(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Step up</source>
        <translation>增大(&amp;S)</translation>
    </message>
    <message>
        <source>Step &amp;down</source>
        <translation>减小(&amp;D)</translation>
    </message>
</context>
<context>
    <name>QAccessibleActionInterface</name>
    <message>
        <source>Press</source>
        <translation>按下</translation>
    </message>
    <message>
        <source>Increase</source>
        <translation>增大</translation>
    </message>
    <message>
        <source>Decrease</source>
        <translation>减小</translation>
    </message>
    <message>
        <source>ShowMenu</source>
        <translation>显示菜单</translation>
    </message>
    <message>
        <source>SetFocus</source>
        <translation>设为焦点</translation>
    </message>
    <message>
        <source>Toggle</source>
        <translation>切换</translation>
    </message>
    <message>
        <source>Scroll Left</source>
        <translation>向左滚动</translation>
    </message>
    <message>
        <source>Scroll Right</source>
        <translation>向右滚动</translation>
    </message>
    <message>
        <source>Scroll Up</source>
        <translation>向上滚动</translation>
    </message>
    <message>
        <source>Scroll Down</source>
        <translation>向下滚动</translation>
    </message>
    <message>
        <source>Previous Page</source>
        <translation>上一页</translation>
    </message>
    <message>
        <source>Next Page</source>
        <translation>下一页</translation>
    </message>
    <message>
        <source>Triggers the action</source>
        <translation>执行此操作</translation>
    </message>
    <message>
        <source>Increase the value</source>
        <translation>增大数值</translation>
    </message>
    <message>
        <source>Decrease the value</source>
        <translation>减小数值</translation>
    </message>
    <message>
        <source>Shows the menu</source>
        <translation>显示菜单</translation>
    </message>
    <message>
        <source>Sets the focus</source>
        <translation>移入焦点</translation>
    </message>
    <message>
        <source>Toggles the state</source>
        <translation>切换状态</translation>
    </message>
    <message>
        <source>Scrolls to the left</source>
        <translation>向左滚动</translation>
    </message>
    <message>
        <source>Scrolls to the right</source>
        <translation>向右滚动</translation>
    </message>
    <message>
        <source>Scrolls up</source>
        <translation>向上滚动</translation>
    </message>
    <message>
        <source>Scrolls down</source>
        <translation>向下滚动</translation>
    </message>
    <message>
        <source>Goes back a page</source>
        <translation>回到上一页</translation>
    </message>
    <message>
        <source>Goes to the next page</source>
        <translation>转到下一页</translation>
    </message>
</context>
<context>
    <name>QColorDialog</name>
    <message>
        <source>Select Color</source>
        <translation>选择颜色</translation>
    </message>
    <message>
        <source>&amp;Basic colors</source>
        <translation>基本颜色(&amp;B)</translation>
    </message>
    <message>
        <source>&amp;Custom colors</source>
        <translation>自定义颜色(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Add to Custom Colors</source>
        <translation>添加到自定义颜色(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;Pick Screen Color</source>
        <translation>从屏幕取色(&amp;P)</translation>
    </message>
    <message>
        <source>Cursor at %1, %2
Press ESC to cancel</source>
        <translation>光标位置 %1, %2
按 Esc 取消</translation>
    </message>
    <message>
        <source>Hu&amp;e:</source>
        <translation>色调(&amp;E)：</translation>
    </message>
    <message>
        <source>&amp;Sat:</source>
        <translation>饱和度(&amp;S)：</translation>
    </message>
    <message>
        <source>&amp;Val:</source>
        <translation>明度(&amp;V)：</translation>
    </message>
    <message>
        <source>&amp;Red:</source>
        <translation>红(&amp;R)：</translation>
    </message>
    <message>
        <source>&amp;Green:</source>
        <translation>绿(&amp;G)：</translation>
    </message>
    <message>
        <source>Bl&amp;ue:</source>
        <translation>蓝(&amp;U)：</translation>
    </message>
    <message>
        <source>A&amp;lpha channel:</source>
        <translation>不透明度(&amp;L)：</translation>
    </message>
    <message>
        <source>&amp;HTML:</source>
        <translation>HTML(&amp;H)：</translation>
    </message>
</context>
<context>
    <name>QComboBox</name>
    <message>
        <source>True</source>
        <translation>真</translation>
    </message>
    <message>
        <source>False</source>
        <translation>假</translation>
    </message>
    <message>
        <source>Open the combo box selection popup</source>
        <translation>打开下拉列表</translation>
    </message>
</context>
<context>
    <name>QCommandLineParser</name>
    <message>
        <source>Displays version information.</source>
        <translation>显示版本信息。</translation>
    </message>
    <message>
        <source>Displays help on commandline options.</source>
        <translation>显示命令行选项的帮助。</translation>
    </message>
    <message>
        <source>Displays help including Qt specific options.</source>
        <translation>显示帮助，包括 Qt 自身的选项。</translation>
    </message>
    <message>
        <source>Unknown option '%1'.</source>
        <translation>未知的选项“%1”。</translation>
    </message>
    <message>
        <source>Unknown options: %1.</source>
        <translation>未知的选项：%1。</translation>
    </message>
    <message>
        <source>Missing value after '%1'.</source>
        <translation>“%1”后面缺少值。</translation>
    </message>
    <message>
        <source>Unexpected value after '%1'.</source>
        <translation>“%1”后面不应有值。</translation>
    </message>
    <message>
        <source>[options]</source>
        <translation>[选项]</translation>
    </message>
    <message>
        <source>Usage: %1</source>
        <translation>用法：%1</translation>
    </message>
    <message>
        <source>Options:</source>
        <translation>选项：</translation>
    </message>
    <message>
        <source>Arguments:</source>
        <translation>参数：</translation>
    </message>
</context>
<context>
    <name>QDialogButtonBox</name>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
</context>
<context>
    <name>QDockWidget</name>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Float</source>
        <translation>浮动</translation>
    </message>
    <message>
        <source>Undocks and re-attaches the dock widget</source>
        <translation>使面板浮动或停靠</translation>
    </message>
    <message>
        <source>Closes the dock widget</source>
        <translation>关闭面板</translation>
    </message>
</context>
<context>
    <name>QFileDialog</name>
    <message>
        <source>Look in:</source>
        <translation>位置：</translation>
    </message>
    <message>
        <source>File &amp;name:</source>
        <translation>文件名(&amp;N)：</translation>
    </message>
    <message>
        <source>Files of type:</source>
        <translation>文件类型：</translation>
    </message>
    <message>
        <source>Directory:</source>
        <translation>文件夹：</translation>
    </message>
    <message>
        <source>&amp;Open</source>
        <translation>打开(&amp;O)</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>保存(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Choose</source>
        <translation>选择(&amp;C)</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>打开</translation>
    </message>
    <message>
        <source>Save As</source>
        <translation>另存为</translation>
    </message>
    <message>
        <source>Find Directory</source>
        <translation>查找文件夹</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>后退</translation>
    </message>
    <message>
        <source>Forward</source>
        <translation>前进</translation>
    </message>
    <message>
        <source>Go back</source>
        <translation>后退</translation>
    </message>
    <message>
        <source>Go forward</source>
        <translation>前进</translation>
    </message>
    <message>
        <source>Parent Directory</source>
        <translation>上级文件夹</translation>
    </message>
    <message>
        <source>Go to the parent directory</source>
        <translation>转到上级文件夹</translation>
    </message>
    <message>
        <source>Create New Folder</source>
        <translation>新建文件夹</translation>
    </message>
    <message>
        <source>Create a New Folder</source>
        <translation>新建一个文件夹</translation>
    </message>
    <message>
        <source>New Folder</source>
        <translation>新建文件夹</translation>
    </message>
    <message>
        <source>&amp;New Folder</source>
        <translation>新建文件夹(&amp;N)</translation>
    </message>
    <message>
        <source>List View</source>
        <translation>列表视图</translation>
    </message>
    <message>
        <source>Change to list view mode</source>
        <translation>切换到列表视图</translation>
    </message>
    <message>
        <source>Detail View</source>
        <translation>详细视图</translation>
    </message>
    <message>
        <source>Change to detail view mode</source>
        <translation>切换到详细视图</translation>
    </message>
    <message>
        <source>Sidebar</source>
        <translation>侧栏</translation>
    </message>
    <message>
        <source>List of places and bookmarks</source>
        <translation>常用位置和书签</translation>
    </message>
    <message>
        <source>Files</source>
        <translation>文件</translation>
    </message>
    <message>
        <source>Directories</source>
        <translation>文件夹</translation>
    </message>
    <message>
        <source>Recent Places</source>
        <translation>最近的位置</translation>
    </message>
    <message>
        <source>My Computer</source>
        <translation>此电脑</translation>
    </message>
    <message>
        <source>&amp;Rename</source>
        <translation>重命名(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>删除(&amp;D)</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>移除</translation>
    </message>
    <message>
        <source>Show &amp;hidden files</source>
        <translation>显示隐藏文件(&amp;H)</translation>
    </message>
    <message>
        <source>Show </source>
        <translation>显示 </translation>
    </message>
    <message>
        <source>All Files (*)</source>
        <translation>所有文件 (*)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>所有文件 (*)</translation>
    </message>
    <message>
        <source>Drive</source>
        <translation>驱动器</translation>
    </message>
    <message>
        <source>File</source>
        <translation>文件</translation>
    </message>
    <message>
        <source>File Folder</source>
        <translation>文件夹</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>文件夹</translation>
    </message>
    <message>
        <source>%1 File</source>
        <translation>%1 文件</translation>
    </message>
    <message>
        <source>Alias</source>
        <translation>替身</translation>
    </message>
    <message>
        <source>Shortcut</source>
        <translation>快捷方式</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>未知</translation>
    </message>
    <message>
        <source>Could not delete directory.</source>
        <translation>无法删除该文件夹。</translation>
    </message>
    <message>
        <source>'%1' is write protected.
Do you want to delete it anyway?</source>
        <translation>“%1”是只读的。
仍要删除吗？</translation>
    </message>
    <message>
        <source>Are you sure you want to delete '%1'?</source>
        <translation>确定要删除“%1”吗？</translation>
    </message>
    <message>
        <source>%1 already exists.
Do you want to replace it?</source>
        <translation>%1 已经存在。
要替换它吗？</translation>
    </message>
    <message>
        <source>%1
Directory not found.
Please verify the correct directory name was given.</source>
        <translation>%1
找不到该文件夹。
请检查名称是否正确。</translation>
    </message>
    <message>
        <source>%1
File not found.
Please verify the correct file name was given.</source>
        <translation>%1
找不到该文件。
请检查名称是否正确。</translation>
    </message>
</context>
<context>
    <name>QFileSystemModel</name>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>大小</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>类型</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>类型</translation>
    </message>
    <message>
        <source>Date Modified</source>
        <translation>修改日期</translation>
    </message>
    <message>
        <source>Computer</source>
        <translation>计算机</translation>
    </message>
    <message>
        <source>My Computer</source>
        <translation>此电脑</translation>
    </message>
    <message>
        <source>Invalid filename</source>
        <translation>文件名无效</translation>
    </message>
    <message>
        <source>&lt;b&gt;The name "%1" cannot be used.&lt;/b&gt;&lt;p&gt;Try using another name, with fewer characters or no punctuation marks.</source>
        <translation>&lt;b&gt;不能使用名称“%1”。&lt;/b&gt;&lt;p&gt;请换一个更短或不含标点的名称。</translation>
    </message>
</context>
<context>
    <name>QFontDialog</name>
    <message>
        <source>Select Font</source>
        <translation>选择字体</translation>
    </message>
    <message>
        <source>&amp;Font</source>
        <translation>字体(&amp;F)</translation>
    </message>
    <message>
        <source>Font st&amp;yle</source>
        <translation>字形(&amp;Y)</translation>
    </message>
    <message>
        <source>&amp;Size</source>
        <translation>大小(&amp;S)</translation>
    </message>
    <message>
        <source>Effects</source>
        <translation>效果</translation>
    </message>
    <message>
        <source>Stri&amp;keout</source>
        <translation>删除线(&amp;K)</translation>
    </message>
    <message>
        <source>&amp;Underline</source>
        <translation>下划线(&amp;U)</translation>
    </message>
    <message>
        <source>Sample</source>
        <translation>示例</translation>
    </message>
    <message>
        <source>Wr&amp;iting System</source>
        <translation>文字(&amp;I)</translation>
    </message>
</context>
<context>
    <name>QGnomeTheme</name>
    <message>
        <source>&amp;OK</source>
        <translation>确定(&amp;O)</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>保存(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>取消(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>关闭(&amp;C)</translation>
    </message>
    <message>
        <source>Close without Saving</source>
        <translation>不保存并关闭</translation>
    </message>
</context>
<context>
    <name>QIODevice</name>
    <message>
        <source>Permission denied</source>
        <translation>没有权限</translation>
    </message>
    <message>
        <source>Too many open files</source>
        <translation>打开的文件过多</translation>
    </message>
    <message>
        <source>No such file or directory</source>
        <translation>没有那个文件或文件夹</translation>
    </message>
    <message>
        <source>No space left on device</source>
        <translation>设备上没有剩余空间</translation>
    </message>
    <message>
        <source>file to open is a directory</source>
        <translation>要打开的是文件夹</translation>
    </message>
    <message>
        <source>Unknown error</source>
        <translation>未知错误</translation>
    </message>
</context>
<context>
    <name>QInputDialog</name>
    <message>
        <source>Enter a value:</source>
        <translation>请输入一个值：</translation>
    </message>
</context>
<context>
    <name>QLineEdit</name>
    <message>
        <source>&amp;Undo</source>
        <translation>撤销(&amp;U)</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>重做(&amp;R)</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>剪切(&amp;T)</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>复制(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>粘贴(&amp;P)</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>全选</translation>
    </message>
</context>
<context>
    <name>QMessageBox</name>
    <message>
        <source>Show Details...</source>
        <translation>显示详细信息...</translation>
    </message>
    <message>
        <source>Hide Details...</source>
        <translation>隐藏详细信息...</translation>
    </message>
</context>
<context>
    <name>QPlatformTheme</name>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Save All</source>
        <translation>全部保存</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>打开</translation>
    </message>
    <message>
        <source>&amp;Yes</source>
        <translation>是(&amp;Y)</translation>
    </message>
    <message>
        <source>Yes to &amp;All</source>
        <translation>全部选是(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;No</source>
        <translation>否(&amp;N)</translation>
    </message>
    <message>
        <source>N&amp;o to All</source>
        <translation>全部选否(&amp;O)</translation>
    </message>
    <message>
        <source>Abort</source>
        <translation>中止</translation>
    </message>
    <message>
        <source>Retry</source>
        <translation>重试</translation>
    </message>
    <message>
        <source>Ignore</source>
        <translation>忽略</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>放弃</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>帮助</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>应用</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>重置</translation>
    </message>
    <message>
        <source>Restore Defaults</source>
        <translation>恢复默认值</translation>
    </message>
</context>
<context>
    <name>QProgressDialog</name>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
</context>
<context>
    <name>QSaveFile</name>
    <message>
        <source>Existing file %1 is not writable</source>
        <translation>现有的文件 %1 不可写</translation>
    </message>
    <message>
        <source>Filename refers to a directory</source>
        <translation>该文件名指的是文件夹</translation>
    </message>
    <message>
        <source>Writing canceled by application</source>
        <translation>写入已被程序取消</translation>
    </message>
    <message>
        <source>QSaveFile cannot open '%1' without direct write fallback enabled.</source>
        <translation>无法打开“%1”：不能在它旁边写入临时文件。</translation>
    </message>
</context>
<context>
    <name>QScrollBar</name>
    <message>
        <source>Scroll here</source>
        <translation>滚动到此处</translation>
    </message>
    <message>
        <source>Left edge</source>
        <translation>最左边</translation>
    </message>
    <message>
        <source>Right edge</source>
        <translation>最右边</translation>
    </message>
    <message>
        <source>Top</source>
        <translation>顶部</translation>
    </message>
    <message>
        <source>Bottom</source>
        <translation>底部</translation>
    </message>
    <message>
        <source>Page left</source>
        <translation>向左一页</translation>
    </message>
    <message>
        <source>Page right</source>
        <translation>向右一页</translation>
    </message>
    <message>
        <source>Page up</source>
        <translation>向上一页</translation>
    </message>
    <message>
        <source>Page down</source>
        <translation>向下一页</translation>
    </message>
    <message>
        <source>Scroll left</source>
        <translation>向左滚动</translation>
    </message>
    <message>
        <source>Scroll right</source>
        <translation>向右滚动</translation>
    </message>
    <message>
        <source>Scroll up</source>
        <translation>向上滚动</translation>
    </message>
    <message>
        <source>Scroll down</source>
        <translation>向下滚动</translation>
    </message>
</context>
<context>
    <name>QTabBar</name>
    <message>
        <source>Scroll Left</source>
        <translation>向左滚动</translation>
    </message>
    <message>
        <source>Scroll Right</source>
        <translation>向右滚动</translation>
    </message>
</context>
<context>
    <name>QUnicodeControlCharacterMenu</name>
    <message>
        <source>Insert Unicode control character</source>
        <translation>插入 Unicode 控制字符</translation>
    </message>
</context>
<context>
    <name>QWidgetTextControl</name>
    <message>
        <source>&amp;Undo</source>
        <translation>撤销(&amp;U)</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>重做(&amp;R)</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>剪切(&amp;T)</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>复制(&amp;C)</translation>
    </message>
    <message>
        <source>Copy &amp;Link Location</source>
        <translation>复制链接地址(&amp;L)</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>粘贴(&amp;P)</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>全选</translation>
    </message>
</context>
</TS>
