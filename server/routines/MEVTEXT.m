MEVTEXT ; Prepares texts for storing, for messages, and for replies
 ;
PLAIN(text,kept) ; A free text as it is filed: without marks; blanks replace control characters, except those in kept
 QUIT $$PRINTABLE($$UNMARKED(text),kept)
 ;
PRINTABLE(text,kept) ; The text with blanks instead of control characters, except those in kept
 NEW byte,controls
 SET controls=""
 FOR byte=0:1:31,127 SET controls=controls_$CHAR(byte)
 QUIT $TRANSLATE(text,$TRANSLATE(controls,kept),$JUSTIFY("",33))
 ;
MARK() ; U+2060, word joiner: invisible, and not a blank for a parser of numbers
 QUIT $CHAR(226,129,160)
 ;
GUARDED(text) ; Adds a mark in front of a text that a client would take for an error: blanks, a minus sign, a digit
 NEW start
 FOR start=1:1 QUIT:$EXTRACT(text,start)'=" "
 QUIT $SELECT($EXTRACT(text,start,start+2)?1"-".1"."1N.E:$$MARK_text,1:text)
 ;
UNMARKED(text) ; Removes all marks: a user may have typed in front of a guarded text before saving it
 NEW at
 IF $LENGTH(text)>20000 QUIT text ; longer than any filed text
 FOR  SET at=$FIND(text,$$MARK) QUIT:'at  SET text=$EXTRACT(text,1,at-4)_$EXTRACT(text,at,$LENGTH(text))
 QUIT text
 ;
BRIEF(text,most) ; The beginning of a text for a message; never splits a character
 NEW cut
 SET text=$$PRINTABLE($EXTRACT(text,1,most+1),"")
 FOR cut=most:-1:most-3 QUIT:$ASCII(text,cut+1)\64'=2
 QUIT $EXTRACT(text,1,cut)
 ;
TRIM(text) ; Trims the blanks at both ends
 NEW first,last
 FOR first=1:1 QUIT:$EXTRACT(text,first)'=" "
 FOR last=$LENGTH(text):-1:1 QUIT:$EXTRACT(text,last)'=" "
 QUIT $EXTRACT(text,first,last)
 ;
LISTED(label,routine) ; The lines of data below a label, joined by ";"
 NEW line,list,text
 SET list=""
 FOR line=1:1 SET text=$PIECE($TEXT(@(label_"+"_line_"^"_routine)),";;",2) QUIT:text=""  DO
 . SET list=list_$SELECT(list="":"",1:";")_text
 QUIT list
