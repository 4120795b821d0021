MEVNAMEINDEX ; Searches by name with indexes, ignoring case, accents and stray blanks
 ; Each file that clients may search: (root,"F",blank and folded name,entry)=""
 ; Patients also: ("G",blank, the folded name from a later word on, "/", the whole name,patient)=""
 ;                ("D",birth date,patient)=""
 ; The blank makes each name sort as a text, even one of digits. ^MEVFND=1 if all entries are indexed.
 ;
FOLD(text) ; The text as it is indexed: upper case, no accents, single blanks, none at the ends or beside commas
 NEW folded
 SET folded=$$COLLAPSED($$TRIM^MEVTEXT($$UNACCENTED($$UPPER^MEVCODES(text))),"  "," ")
 QUIT $$COLLAPSED($$COLLAPSED(folded,", ",",")," ,",",")
 ;
COLLAPSED(text,long,short) ; Replaces long by short until none is left
 FOR  QUIT:text'[long  SET text=$PIECE(text,long)_short_$PIECE(text,long,2,$LENGTH(text))
 QUIT text
 ;
UNACCENTED(text) ; Removes the accents of Latin letters
 NEW at,byte,next,plain
 IF '$DATA(folds) DO LOADFOLDS
 IF $TRANSLATE(text,folds)=text QUIT text
 SET plain=""
 FOR at=1:1:$LENGTH(text) DO
 . SET byte=$ASCII(text,at),next=$ASCII(text,at+1)
 . IF $DATA(folds(byte,next)) SET plain=plain_folds(byte,next),at=at+1
 . ELSE  SET plain=plain_$CHAR(byte)
 QUIT plain
 ;
LOADFOLDS ; Caches the table in folds(first byte,second byte)=letters, and the first bytes in folds
 NEW byte,count,index,letters,line,run,runs
 SET folds=""
 FOR line=1:1 SET runs=$PIECE($TEXT(FOLDS+line),";;",2) QUIT:runs=""  DO
 . SET byte=$PIECE(runs,";",2)
 . FOR index=1:1:$LENGTH($PIECE(runs,";",3),",") SET run=$PIECE($PIECE(runs,";",3),",",index) DO
 . . SET letters=$TRANSLATE(run,"0123456789-")
 . . FOR count=1:1:$TRANSLATE(run,letters_"-") DO  SET byte=byte+1
 . . . SET:letters'="" folds($PIECE(runs,";"),byte)=$SELECT(run["-":"",1:letters)
 . SET:folds'[$CHAR($PIECE(runs,";")) folds=folds_$CHAR($PIECE(runs,";"))
 QUIT
 ;
FOLDS ; first byte;second byte;runs: "A6" six forms of A, "1" one unchanged character, "M64-" 64 removed ones
 ;;195;128;A6,AE1,C1,E4,I4,D1,N1,O5,1,O1,U4,Y1,TH1,SS1,A6,AE1,C1,E4,I4,D1,N1,O5,1,O1,U4,Y1,TH1,Y1
 ;;196;128;A6,C8,D4,E10,G8,H4,I10,IJ2,J2,K3,L7
 ;;197;128;L3,N9,O6,OE2,R6,S8,T6,U12,W2,Y3,Z6,S1
 ;;200;152;S2,T2
 ;;194;160; 1
 ;;204;128;M64-
 ;;205;128;M48-
 ;;
INDEX(root,ien) ; Indexes an entry of a searchable file
 NEW at,name,node
 SET node=@root@(ien,0),name=$EXTRACT($$FOLD($PIECE(node,"^")),1,80)
 QUIT:name=""
 SET @root@("F"," "_name,ien)=""
 QUIT:root'="^MEVPAT"
 SET:$PIECE(node,"^",3) ^MEVPAT("D",$PIECE(node,"^",3)\1,ien)=""
 ; Each later word, except initials.
 FOR at=2:1:$LENGTH(name) IF " ,-"[$EXTRACT(name,at-1)," ,-"'[$EXTRACT(name,at+1) DO
 . SET ^MEVPAT("G"," "_$EXTRACT(name,at,80)_"/"_name,ien)=""
 QUIT
 ;
WALK(root,index,text,take) ; Calls take for the entries whose indexed name begins with the text, until count reaches most
 NEW ien,key
 SET text=" "_$EXTRACT(text,1,80),key=$ORDER(@root@(index,text),-1)
 FOR  SET key=$ORDER(@root@(index,key)) QUIT:key=""  QUIT:$EXTRACT(key,1,$LENGTH(text))'=text  QUIT:count'<most  DO
 . SET ien=""
 . FOR  SET ien=$ORDER(@root@(index,key,ien)) QUIT:ien=""  QUIT:count'<most  DO @take ; an entry point of this server
 QUIT
 ;
PATIENTS(text) ; Adds the patients that match a folded text: by number, birth date, surname, given name
 NEW at,date,dfn,words
 IF text?1.9N,$DATA(^MEVPAT(+text,0)) DO ADDPATIENT^MEVHOSTCALLS(+text)
 SET date=$$TYPED^MEVDATE(text),dfn=""
 IF date FOR  SET dfn=$ORDER(^MEVPAT("D",date,dfn)) QUIT:dfn=""  QUIT:count'<most  DO ADDPATIENT^MEVHOSTCALLS(dfn)
 DO NAMED(text)
 QUIT:text=""
 ; In a name without a comma, the given name may begin at any blank or come first. A blank may replace a hyphen.
 SET words=$LENGTH(text," ")
 FOR at=1:1:words-1 DO NAMED($PIECE(text," ",1,at)_"-"_$PIECE(text," ",at+1,words))
 SET:text["," words=1
 FOR at=1:1:words-1 DO NAMED($PIECE(text," ",1,at)_","_$PIECE(text," ",at+1,words))
 FOR at=1:1:words-1 DO NAMED($PIECE(text," ",at+1,words)_","_$PIECE(text," ",1,at))
 DO WALK("^MEVPAT","G",text,"ADDPATIENT^MEVHOSTCALLS(ien)")
 QUIT
 ;
NAMED(text) ; Adds the patients whose whole name begins with the text
 DO WALK("^MEVPAT","F",text,"ADDPATIENT^MEVHOSTCALLS(ien)")
 QUIT
 ;
BUILD ; Indexes all entries and reports its progress every second; continues an interrupted run
 NEW file,ien,percent,root,told
 SET file="",told=""
 FOR  SET file=$$NEXT^MEVFILES(file) QUIT:file=""  DO
 . SET root=$$ROOT^MEVFILES(file),ien=+$GET(^MEVFND(file))
 . FOR  SET ien=$ORDER(@root@(ien)) QUIT:'ien  DO INDEX(root,ien) IF ien#1000=0 DO
 . . SET ^MEVFND(file)=ien,percent=ien*100\($PIECE(@root@(0),"^",3)+1)
 . . DO PROGRESS^MEVDATAVERSION(percent,"Indexing the names")
 KILL ^MEVFND
 SET ^MEVFND=1
 QUIT
