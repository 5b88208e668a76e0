" Plays cases in vim and writes them with what vim makes of them:
"
"     keys 2dd  in |rx a / tx a / halt  out |halt
"
" Lines are joined by " / ", an empty one is ∅, blanks at a line's ends are ·, and the caret is |.
" The environment names the file to read, KEST_CASES, and the one to write, KEST_PLAYED.

set encoding=utf-8 noswapfile viminfo= nomore nofixendofline report=9999 shortmess=aoOstTWAIcqFS
" What the game has for options.
set noshowmode belloff=all nojoinspaces autoindent expandtab tabstop=4 shiftwidth=4 shiftround backspace=indent,eol,start noswapfile

" Keys have the names of the key bar; "<<>" types a "<".
let s:names = {'Esc': "\<Esc>", 'Enter': "\<CR>", 'Backspace': "\<BS>", 'Tab': "\<Tab>",
    \ 'Del': "\<Del>", 'Left': "\<Left>", 'Right': "\<Right>", 'Up': "\<Up>", 'Down': "\<Down>",
    \ 'Home': "\<Home>", 'End': "\<End>", '<': '<',
    \ 'Ctrl+Y': "\<C-r>", 'Ctrl+W': "\<C-w>", 'Ctrl+U': "\<C-u>", 'Ctrl+H': "\<C-h>"}

function s:Keys(script)
    return substitute(a:script, '<\(<\|[A-Z][A-Za-z+]*\)>', '\=s:names[submatch(1)]', 'g')
endfunction

function s:Load(marked)
    silent! %bwipeout!
    let lines = split(a:marked, ' / ', 1)
    call map(lines, {_, line -> line ==# '∅' ? '' : tr(line, '·', ' ')})
    let row = match(lines, '|')
    let column = stridx(lines[row], '|')
    let lines[row] = substitute(lines[row], '|', '', '')
    set undolevels=-1
    call setline(1, lines)
    set undolevels=1000
    call cursor(row + 1, column + 1)
endfunction

function s:Marked()
    let lines = getline(1, '$')
    let row = line('.') - 1
    let at = col('.') - 1
    let lines[row] = strpart(lines[row], 0, at) . '|' . strpart(lines[row], at)
    call map(lines, {_, line -> line ==# '' ? '∅' : s:ShowBlanks(line)})
    return join(lines, ' / ')
endfunction

" The caret does not hide a blank at its side.
function s:ShowBlanks(line)
    let line = substitute(a:line, '^ *|\? *', '\=tr(submatch(0), " ", "·")', '')
    return substitute(line, ' *|\? *$', '\=tr(submatch(0), " ", "·")', '')
endfunction

function s:Play(case)
    let parts = matchlist(a:case, '^keys \(.\{-}\)\( \+\)in \(.\{-}\)\( \+\)out .\{-}\(  message .*\)\?$')
    call s:Load(parts[3])
    let @/ = ''
    call setreg('"', [])
    call setcharsearch({'char': "\x01"})
    " An error is no news here, and is not to be waited for.
    let g:keys = s:Keys(parts[1])
    call assert_fails('call feedkeys(g:keys, "tx")')
    return 'keys ' . parts[1] . parts[2] . 'in ' . parts[3] . parts[4] . 'out ' . s:Marked() . parts[5]
endfunction

let s:played = []
for s:line in readfile($KEST_CASES)
    call add(s:played, s:line =~# '^keys ' ? s:Play(s:line) : s:line)
endfor
call writefile(s:played, $KEST_PLAYED)
qall!
