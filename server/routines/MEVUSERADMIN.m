MEVUSERADMIN ; The administrator's tool: users, their keys and classes. What it changes is in the audit, by the name of whoever
 ; called it. Its words come by the environment, never as code: mev_words, one a line.
 ; ^MEVUSR(user,0)=name ^ description ^ class ^ "1" may sign on    ^MEVUSR(user,"KEY",key)=""    ^MEVUSR(user,"PAR",name)=value
 ;
ADMIN ; Entry: prints what was asked for; ends with 1 after a refusal, which is printed instead
 NEW action,audit,count,ien,name,person,reply,touched,user,words
 SET $ETRAP="WRITE ""The server failed: "",$ZSTATUS,! ZHALT 1"
 SET words=$TRANSLATE($ZTRNLNM("mev_words"),"^"," "),words=$TRANSLATE(words,$CHAR(10),"^")
 SET action=$PIECE(words,"^"),name=$PIECE(words,"^",2),count=$LENGTH(words,"^"),user=0,person=$ZTRNLNM("mev_administrator"),reply=""
 IF count=1,action=""!(action="list") DO LIST HALT
 IF "^list^add^disable^enable^keys^class^block^unblock^"'[("^"_action_"^") DO FAIL("There is no --users "_action_". It is list, add, disable, enable, keys, class, block or unblock.")
 IF name="" DO FAIL("Whom? A user's name is missing.")
 IF count>40 DO FAIL("These are too many words.")
 SET ien=$$NAMED^MEVHOSTCALLS(name)
 IF action="disable",count=3,ien'="" DO
 . IF ("^"_ien_"^")'[("^"_$PIECE(words,"^",3)_"^") DO FAIL("This is no number of a user named "_name_" who may sign on: "_$PIECE(words,"^",3))
 . SET ien=$PIECE(words,"^",3),count=2
 IF ien["^" DO FAIL("Several users of this name may sign on. Disable all but one by --users disable """_name_""" NUMBER; the numbers are "_$TRANSLATE(ien,"^"," ")_".")
 IF action="list"!("^disable^enable^block^unblock^"[("^"_action_"^")&(count>2)) DO FAIL("This word is too much: "_$PIECE(words,"^",$SELECT(action="list":2,1:3)))
 IF ien,count=2,"^keys^class^"[("^"_action_"^") DO SHOW(ien) HALT
 DO CHANGE
 HALT
 ;
CHANGE ; One transaction, with its entry in the audit. What a word asks for is checked inside.
 NEW asked,refusals
 SET asked=$TRANSLATE(words,"^"," ")
 TSTART ():SERIAL
 KILL touched
 SET audit=$$BEGIN^MEVAUDIT,reply=1
 IF action="add" DO ADD
 IF action'="add" DO:action'["block"!ien KEPT
 IF action'="add" DO @$SELECT(action="disable":"ABLE(0)",action="enable":"ABLE(1)",action="keys":"KEYS",action="class":"CLASS",action="block":"BLOCK(1)",1:"BLOCK(0)")
 DO CHANGE^MEVAUDIT("USERS "_action)
 TCOMMIT
 DO:ien SHOW(ien)
 QUIT
 ;
FAIL(text) ; Refuses, and changes nothing
 IF $TLEVEL TROLLBACK
 WRITE text,!
 ZHALT 1
 ;
KEPT ; The user must be there; what stands there now goes into the audit
 IF 'ien DO FAIL("There is no user named "_name_".")
 DO KEEP^MEVFILES("^MEVUSR",ien)
 QUIT
 ;
ADD ; add NAME [DESCRIPTION]
 NEW bad,other
 SET other=$ORDER(^MEVUSR("B",name,""))
 IF other SET other=other_$SELECT($PIECE(^MEVUSR(other,0),"^",4):".",1:", who may not sign on: --users enable changes that.")
 IF other'="" DO FAIL("There is a user named "_name_" already, number "_other)
 IF $LENGTH(name)<3!($LENGTH(name)>80) DO FAIL("A name has 3 to 80 bytes.")
 IF $$PRINTABLE^MEVTEXT(name,"")'=name!($ZTRNLNM("mev_words")["^") DO FAIL("A name holds no control characters and no ^.")
 IF $$CAPITALS(name)'=name DO FAIL("A name stands in capital letters, as the certificate has it: "_$$CAPITALS(name))
 SET bad=name'?1.E1","1.E!($LENGTH(name,",")'=2)!(name[", ")!(name[" ,")!(name'=$$TRIM^MEVTEXT(name))!(name["""")!(name["\")
 IF bad DO FAIL("A name is LAST,FIRST: a comma, no blanks beside it, no quotes or backslashes.")
 IF $LENGTH($PIECE(words,"^",3))>200!(count>3) DO FAIL("The description is one word for the shell (quote it), of at most 200 bytes.")
 SET ien=$$FILE^MEVFILES("^MEVUSR",0,name_"^"_$$PRINTABLE^MEVTEXT($PIECE(words,"^",3),"")_"^^1")
 QUIT
 ;
CAPITALS(name) ; The name in capital letters, those of Western Europe with accents included
 NEW at,byte
 SET name=$$UPPER^MEVCODES(name)
 FOR at=2:1:$LENGTH(name) SET byte=$ASCII(name,at) IF $ASCII(name,at-1)=195,byte>159,byte'=183,byte<191 SET $EXTRACT(name,at)=$CHAR(byte-32)
 QUIT name
 ;
ABLE(may) ; disable NAME, enable NAME
 IF may,$$NAMED^MEVHOSTCALLS(name)'=ien,$PIECE(^MEVUSR($$NAMED^MEVHOSTCALLS(name),0),"^",4) DO FAIL("Another user of this name may sign on.")
 SET $PIECE(^MEVUSR(ien,0),"^",4)=may
 QUIT
 ;
KEYS ; keys NAME [+KEY|-KEY ...]
 NEW index,key,word
 FOR index=3:1:count SET word=$PIECE(words,"^",index),key=$EXTRACT(word,2,99) DO
 . IF "+-"'[$EXTRACT(word)!(key="") DO FAIL("A key is given with + and taken with -: "_word)
 . IF $$KNOWN'[("^"_key_"^") DO FAIL("There is no key "_key_". The keys are: "_$$NAMES_". Quote one that holds blanks.")
 . IF $EXTRACT(word)="+" SET ^MEVUSR(ien,"KEY",key)="" QUIT
 . KILL ^MEVUSR(ien,"KEY",key)
 QUIT
 ;
KNOWN() ; The keys that the server and the panel ask for
 QUIT "^PROVIDER^MEVZ REP HIST EDIT^MEVZ PEDIATRIC EDIT^MEVZ ELDER CASE EDIT^MEVZ ASTHMA EDIT^MEVZ TX CONTRACT EDIT^MEVZ ER EDIT^QASZMENU^MEVZ CAC^MEVZ VIEW ONLY^"
 ;
NAMES() ; The keys for a message
 NEW index,list
 SET list=$PIECE($$KNOWN,"^",2)
 FOR index=3:1:$LENGTH($$KNOWN,"^")-1 SET list=list_", "_$PIECE($$KNOWN,"^",index)
 QUIT list
 ;
CLASS ; class NAME [CLASS|+CLASS|-]: puts into a class, into a new one, into none
 NEW class,word
 SET word=$PIECE(words,"^",3)
 IF count>3!(word="") DO FAIL("A class is one word for the shell: quote it.")
 IF word="-" SET $PIECE(^MEVUSR(ien,0),"^",3)="" QUIT
 SET class=$$CLASSED($TRANSLATE(word,"+"))
 IF $EXTRACT(word)="+" DO
 . SET word=$EXTRACT(word,2,99)
 . IF class DO FAIL("There is a class "_word_" already.")
 . IF $LENGTH(word)<3!($LENGTH(word)>40)!(word'?1U.(1U,1N,1" ",1"-")) DO FAIL("A class has 3 to 40 capital letters, digits, blanks and hyphens.")
 . SET class=$$FILE^MEVFILES("^MEVCLS",0,word)
 IF 'class DO FAIL("There is no class "_word_". The classes are: "_$$CLASSES_". A + before it makes a new one.")
 SET $PIECE(^MEVUSR(ien,0),"^",3)=class
 QUIT
 ;
CLASSED(name) ; The class of this name, empty for none
 QUIT $ORDER(^MEVCLS("B",$SELECT(name="":" ",1:$EXTRACT(name,1,80)),""))
 ;
CLASSES() ; Their names
 NEW list,name
 SET (list,name)=""
 FOR  SET name=$ORDER(^MEVCLS("B",name)) QUIT:name=""  SET list=list_$SELECT(list="":"",1:", ")_name
 QUIT $SELECT(list="":"none yet",1:list)
 ;
BLOCK(on) ; block NAME|CLASS, unblock NAME|CLASS: the editing of reproductive histories
 NEW class,root
 SET class=$SELECT(ien:"",1:$$CLASSED(name))
 IF 'ien,'class DO FAIL("There is no user and no class named "_name_".")
 SET root=$SELECT(ien:"^MEVUSR",1:"^MEVCLS")
 DO:'ien KEEP^MEVFILES(root,class)
 IF on SET @root@($SELECT(ien:ien,1:class),"PAR","MEV DISABLE REP HIST EDITING")=1
 ELSE  KILL @root@($SELECT(ien:ien,1:class),"PAR","MEV DISABLE REP HIST EDITING")
 IF class WRITE "Class ",name,$SELECT(on:": no editing of reproductive histories",1:": may edit reproductive histories, as the keys allow"),!
 QUIT
 ;
LIST ; list: all users
 NEW ien,shown
 SET (ien,shown)=0
 FOR  SET ien=$ORDER(^MEVUSR(ien)) QUIT:'ien  DO SHOW(ien) SET shown=1
 IF 'shown WRITE "There are no users yet. The first one: --users add LAST,FIRST",!
 QUIT
 ;
SHOW(ien) ; One user in one line
 NEW class,key,list,node
 SET node=^MEVUSR(ien,0),(key,list)="",class=$PIECE(node,"^",3)
 FOR  SET key=$ORDER(^MEVUSR(ien,"KEY",key)) QUIT:key=""  SET list=list_$SELECT(list="":"",1:", ")_key
 WRITE $JUSTIFY(ien,5),"  ",$PIECE(node,"^"),$SELECT($PIECE(node,"^",4):"",1:" (may not sign on)"),"; keys: ",$SELECT(list="":"none",1:list)
 IF class'="" WRITE "; class ",$PIECE($GET(^MEVCLS(class,0)),"^")
 IF $GET(^MEVUSR(ien,"PAR","MEV DISABLE REP HIST EDITING")) WRITE "; no editing of reproductive histories"
 IF $PIECE(node,"^",2)'="" WRITE "; ",$PIECE(node,"^",2)
 WRITE !
 QUIT
